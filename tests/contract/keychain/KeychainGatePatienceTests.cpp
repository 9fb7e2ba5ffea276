// For whom the gate waits: somebody who is asked for a password, and a bus that does not answer.
#include "FakeSecretService.h"
#include "KeychainGateTest.h"

#include <algorithm>
#include <csignal>
#include <vector>

#include <gmock/gmock.h>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using platform::KeychainItems;
using secretservice::KeychainGate;
using testing::Contains;
using testing::HasSubstr;
using Prompt = FakeSecretService::Prompt;

bool waitForPrompt(KeyringSession& session, const FakeSecretService& service)
{
    return session.loop().runUntil([&service] { return service.prompt() == Prompt::Up; });
}

bool waitForLine(KeyringSession& session, const std::string& part)
{
    return session.loop().runUntil([&] {
        const std::vector<std::string> lines = session.lines();
        return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.find(part) != std::string::npos;
        });
    });
}

/// A gate opens although the bus takes longer than its patience, and one line says so.
void waitOutABusThatDoesNotAnswer(KeyringSession& session)
{
    session.bus().process().signal(SIGSTOP);
    OpeningGate gate(session, 300ms);

    EXPECT_TRUE(waitForLine(session, "bus does not answer"));
    EXPECT_FALSE(gate.answered);
    session.bus().process().signal(SIGCONT);

    ASSERT_TRUE(gate.waitForAnswer());
    EXPECT_TRUE(isInTheService(gate.items.get())) << gate.refusal;
    EXPECT_EQ(session.lines().size(), 1U);
}

} // namespace

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
    ASSERT_TRUE(waitForPrompt(session, service));
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
    ASSERT_TRUE(waitForPrompt(session, service));
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
        ASSERT_TRUE(waitForPrompt(session, service));
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
    waitOutABusThatDoesNotAnswer(session);
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
    waitOutABusThatDoesNotAnswer(session);
}

TEST_F(KeychainGateTest, EndWhileTheBusDoesNotAnswerComesAtOnce)
{
    session.bus().process().signal(SIGSTOP);
    {
        const OpeningGate gate(session);
        EXPECT_TRUE(waitForLine(session, "bus does not answer"));
    }
    session.bus().process().signal(SIGCONT);
}

TEST_F(KeychainGateTest, ServiceThatIsStartedAnewDuringItsPromptIsAskedAgain)
{
    auto service =
        std::make_unique<FakeSecretService>(session.bus().address(), ACCOUNT, "value", true);
    markKept();
    OpeningGate gate(session);
    ASSERT_TRUE(waitForPrompt(session, *service));
    service.reset();
    const FakeSecretService successor(session.bus().address(), ACCOUNT, "value", false);

    ASSERT_TRUE(gate.waitForAnswer());
    ASSERT_TRUE(isInTheService(gate.items.get())) << gate.refusal;
    EXPECT_EQ(textOf(*gate.items, ACCOUNT), "value");
}
