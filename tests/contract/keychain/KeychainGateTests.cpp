// Where the gate finds the user's items, for whom it waits, and when it refuses.
#include "FakeSecretService.h"
#include "KeyringSession.h"
#include "desktop/Wait.h"
#include "linux/secretservice/EmbeddedKeychain.h"
#include "linux/secretservice/KeychainGate.h"
#include "linux/secretservice/SecretServiceKeychain.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using platform::KeychainItems;
using secretservice::KeychainGate;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Prompt = FakeSecretService::Prompt;

constexpr auto ACCOUNT = KeyringSession::ACCOUNT;

bool isEmbedded(KeychainItems* items)
{
    return dynamic_cast<secretservice::EmbeddedKeychain*>(items) != nullptr;
}

bool isInTheService(KeychainItems* items)
{
    return dynamic_cast<secretservice::SecretServiceKeychain*>(items) != nullptr;
}

/// A gate that is being waited for, while the test goes on.
class OpeningGate
{
public:
    explicit OpeningGate(KeyringSession& session, std::chrono::milliseconds patience = 60s)
        : loop(session.loop()),
          gate(session.loop(), session.places(), session.report(), patience)
    {
        gate.open(
            [this](std::unique_ptr<KeychainItems> ready) {
                items = std::move(ready);
                answered = true;
            },
            [this](const std::string& reason) {
                refusal = reason;
                answered = true;
            }
        );
    }

    bool waitForAnswer()
    {
        return loop.runUntil([this] { return answered; }, 100s);
    }

    std::unique_ptr<KeychainItems> items;
    std::string refusal;
    bool answered = false;

private:
    desktop::MainLoop& loop;
    KeychainGate gate;
};

class KeychainGateTest : public testing::Test
{
protected:
    bool waitForPrompt(const FakeSecretService& service)
    {
        return session.loop().runUntil([&service] { return service.prompt() == Prompt::Up; });
    }

    bool waitForLine(const std::string& part)
    {
        return session.loop().runUntil([&] {
            const std::vector<std::string> lines = session.lines();
            return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
                return line.find(part) != std::string::npos;
            });
        });
    }

    /// A gate opens although the bus takes longer than its patience, and one line says so.
    void waitOutABusThatDoesNotAnswer()
    {
        session.bus().process().signal(SIGSTOP);
        OpeningGate gate(session, 300ms);

        EXPECT_TRUE(waitForLine("bus does not answer"));
        EXPECT_FALSE(gate.answered);
        session.bus().process().signal(SIGCONT);

        ASSERT_TRUE(gate.waitForAnswer());
        EXPECT_TRUE(isInTheService(gate.items.get())) << gate.refusal;
        EXPECT_EQ(session.lines().size(), 1U);
    }

    /// As if this user's items had been in the Secret Service before.
    void markKept() { ASSERT_EQ(secretservice::KeptMarker(marker).set(), std::nullopt); }

    KeyringSession session;
    fs::path marker = session.places().marker();
};

TEST_F(KeychainGateTest, SessionWithoutABusGetsTheEmbeddedKeychain)
{
    session.stopBus();
    const auto items = session.open();

    EXPECT_TRUE(isEmbedded(items.get()));
    EXPECT_FALSE(fs::exists(marker));
}

TEST_F(KeychainGateTest, BusWithoutASecretServiceGetsTheEmbeddedKeychain)
{
    const auto items = session.open();

    EXPECT_TRUE(isEmbedded(items.get()));
    EXPECT_THAT(session.lines(), IsEmpty());
}

TEST_F(KeychainGateTest, OpenKeyringIsUsedAndRememberedOnceItHoldsAnItem)
{
    session.startKeyring();
    auto items = session.open();
    ASSERT_TRUE(isInTheService(items.get()));
    EXPECT_FALSE(fs::exists(marker));

    items->add(ACCOUNT, bytes("value"));
    EXPECT_TRUE(session.waitForStoredItem("value"));
    EXPECT_TRUE(fs::exists(marker));
}

TEST_F(KeychainGateTest, ItemsAreKnownBeforeTheFirstQuestion)
{
    session.startKeyring();
    session.open()->add(ACCOUNT, bytes("value"));
    ASSERT_TRUE(session.waitForStoredItem("value"));
    const auto items = session.open();
    ASSERT_NE(items, nullptr);
    session.keyringProcess().signal(SIGSTOP);

    EXPECT_EQ(textOf(*items, ACCOUNT), "value");
    session.keyringProcess().signal(SIGCONT);
}

TEST_F(KeychainGateTest, MissingServiceIsRefusedWhereItemsWereKeptInOne)
{
    markKept();
    const auto items = session.open(300ms);

    EXPECT_EQ(items, nullptr);
    EXPECT_THAT(session.refusal(), HasSubstr("is not there"));
    EXPECT_FALSE(fs::exists(session.places().embedded()));
}

TEST_F(KeychainGateTest, MissingBusIsRefusedWhereItemsWereKeptInAService)
{
    markKept();
    session.stopBus();

    EXPECT_EQ(session.open(300ms), nullptr);
    EXPECT_THAT(session.refusal(), HasSubstr("is not there"));
}

TEST_F(KeychainGateTest, OpenKeyringThatLostItsItemsIsUsedAndThatIsSaidOnce)
{
    ASSERT_EQ(secretservice::KeptMarker(marker).note(true), std::nullopt);
    session.startKeyring();

    EXPECT_TRUE(isInTheService(session.open().get())) << session.refusal();
    EXPECT_THAT(session.lines(), ElementsAre(HasSubstr("has lost the settings")));

    EXPECT_TRUE(isInTheService(session.open().get())) << session.refusal();
    EXPECT_EQ(session.lines().size(), 1U);
}

TEST_F(KeychainGateTest, ItemsAreNotedAsTheyComeAndGo)
{
    session.startKeyring();
    const secretservice::KeptMarker kept(marker);
    auto items = session.open();
    ASSERT_NE(items, nullptr);
    items->add(ACCOUNT, bytes("value"));
    EXPECT_TRUE(desktop::waitUntil([&] { return kept.holdsItems(); }, 60s));

    items->remove(ACCOUNT);
    EXPECT_TRUE(desktop::waitUntil([&] { return !kept.holdsItems(); }, 60s));
    EXPECT_TRUE(kept.isSet());
    items.reset();
    EXPECT_TRUE(isInTheService(session.open().get())) << session.refusal();
}

TEST_F(KeychainGateTest, ServiceThatComesLateIsWaitedForWhereItemsWereKeptInOne)
{
    markKept();
    OpeningGate gate(session);
    session.startKeyring();

    ASSERT_TRUE(gate.waitForAnswer());
    EXPECT_TRUE(isInTheService(gate.items.get())) << gate.refusal;
}

TEST_F(KeychainGateTest, EmbeddedItemsStayWhereTheyAreWhenAServiceAppears)
{
    session.open()->add(ACCOUNT, bytes("value"));
    session.startKeyring();
    const auto items = session.open();

    ASSERT_TRUE(isEmbedded(items.get()));
    EXPECT_EQ(textOf(*items, ACCOUNT), "value");
}

TEST_F(KeychainGateTest, DamagedEmbeddedItemIsRefusedAndLeftAlone)
{
    session.open()->add(ACCOUNT, bytes("value"));
    fs::path item;
    for (const auto& entry : fs::directory_iterator(session.places().embedded())) {
        item = entry.path().extension() == ".item" ? entry.path() : item;
    }
    desktop::writeFile(item, "rubbish");

    EXPECT_EQ(session.open(), nullptr);
    EXPECT_THAT(session.refusal(), HasSubstr(item.filename().string()));
    EXPECT_EQ(desktop::readFile(item), "rubbish");
}

TEST_F(KeychainGateTest, LockedKeyringWhosePromptNobodyCanShowIsRefused)
{
    session.startKeyring();
    session.stopKeyring();
    session.startLockedKeyring();

    EXPECT_EQ(session.open(), nullptr);
    EXPECT_THAT(session.refusal(), HasSubstr("stays locked"));
    EXPECT_FALSE(fs::exists(session.places().embedded()));
}

TEST_F(KeychainGateTest, LockedServiceIsWaitedForUntilItsPromptIsAnswered)
{
    FakeSecretService service(session.bus().address(), ACCOUNT, "value", true);
    OpeningGate gate(session);
    ASSERT_TRUE(waitForPrompt(service));
    EXPECT_FALSE(gate.answered);
    EXPECT_THAT(session.lines(), Contains(HasSubstr("locked")));

    service.answerPrompt(Prompt::Granted);
    ASSERT_TRUE(gate.waitForAnswer());
    ASSERT_TRUE(isInTheService(gate.items.get())) << gate.refusal;
    EXPECT_EQ(textOf(*gate.items, ACCOUNT), "value");
    EXPECT_TRUE(fs::exists(marker));
}

TEST_F(KeychainGateTest, DismissedPromptIsRefused)
{
    FakeSecretService service(session.bus().address(), ACCOUNT, "value", true);
    OpeningGate gate(session);
    ASSERT_TRUE(waitForPrompt(service));
    service.answerPrompt(Prompt::Dismissed);

    ASSERT_TRUE(gate.waitForAnswer());
    EXPECT_EQ(gate.items, nullptr);
    EXPECT_THAT(gate.refusal, HasSubstr("stays locked"));
}

TEST_F(KeychainGateTest, EndWhileThePromptIsUpCallsNobody)
{
    FakeSecretService service(session.bus().address(), ACCOUNT, "value", true);
    bool called = false;
    {
        KeychainGate gate(session.loop(), session.places(), session.report());
        gate.open(
            [&called](std::unique_ptr<KeychainItems> /*items*/) { called = true; },
            [&called](const std::string& /*reason*/) { called = true; }
        );
        ASSERT_TRUE(waitForPrompt(service));
    }
    bool drained = false;
    session.loop().asyncMain([&drained] { drained = true; });

    EXPECT_TRUE(session.loop().runUntil([&drained] { return drained; }));
    EXPECT_FALSE(called);
}

TEST_F(KeychainGateTest, BusThatDoesNotAnswerIsWaitedForAndThatIsSaidOnce)
{
    session.startKeyring();
    markKept();
    waitOutABusThatDoesNotAnswer();
}

TEST_F(KeychainGateTest, BusThatStopsAnsweringIsNotTakenForOneWithoutAService)
{
    session.startKeyring();
    secretservice::Error error;
    // What the process shares is made before, so that only the questions go unanswered.
    const secretservice::ObjectPtr<GDBusConnection> shared(
        g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, error.out())
    );
    ASSERT_NE(shared, nullptr);
    g_dbus_connection_set_exit_on_close(shared.get(), FALSE);
    waitOutABusThatDoesNotAnswer();
}

TEST_F(KeychainGateTest, EndWhileTheBusDoesNotAnswerComesAtOnce)
{
    session.bus().process().signal(SIGSTOP);
    {
        const OpeningGate gate(session);
        EXPECT_TRUE(waitForLine("bus does not answer"));
    }
    session.bus().process().signal(SIGCONT);
}

// The last one: after it the library keeps a connection to this test's bus, in this process, for
// ever.
TEST_F(KeychainGateTest, ServiceThatIsStartedAnewDuringItsPromptIsAskedAgain)
{
    auto service =
        std::make_unique<FakeSecretService>(session.bus().address(), ACCOUNT, "value", true);
    markKept();
    OpeningGate gate(session);
    ASSERT_TRUE(waitForPrompt(*service));
    service.reset();
    const FakeSecretService successor(session.bus().address(), ACCOUNT, "value", false);

    ASSERT_TRUE(gate.waitForAnswer());
    ASSERT_TRUE(isInTheService(gate.items.get())) << gate.refusal;
    EXPECT_EQ(textOf(*gate.items, ACCOUNT), "value");
}

} // namespace
