// Where the gate finds the user's items, and when it refuses.
#include "KeychainGateTest.h"
#include "desktop/Wait.h"

#include <csignal>

#include <gmock/gmock.h>

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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
