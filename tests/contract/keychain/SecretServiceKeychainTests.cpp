// The keychain in a real keyring: how items look to others, and what happens when the keyring or
// the bus fails. Where a call is made while something hangs, that it returns is what is checked.
#include "KeyringSession.h"
#include "desktop/Wait.h"
#include "linux/secretservice/SecretServiceKeychain.h"

#include <csignal>
#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using platform::KeychainStatus;
using testing::Each;
using testing::HasSubstr;

constexpr auto ACCOUNT = KeyringSession::ACCOUNT;

class SecretServiceKeychainTest : public testing::Test
{
protected:
    void open()
    {
        session.startKeyring();
        items = session.open();
        ASSERT_NE(items, nullptr) << session.refusal();
    }

    void addItem(const std::string& value)
    {
        ASSERT_EQ(items->add(ACCOUNT, bytes(value)), KeychainStatus::NoError);
        ASSERT_TRUE(session.waitForStoredItem(value));
    }

    /// Waits until the keychain gives that answer.
    bool becomes(const std::optional<std::string>& value)
    {
        return desktop::waitUntil(
            [&] { return textOf(*items, ACCOUNT) == value; }, std::chrono::seconds(60)
        );
    }

    KeyringSession session;
    std::unique_ptr<platform::KeychainItems> items;
};

TEST_F(SecretServiceKeychainTest, ItemHasTheAttributesThatOthersLookFor)
{
    open();
    addItem("value");

    EXPECT_TRUE(dynamic_cast<secretservice::SecretServiceKeychain*>(items.get()) != nullptr);
    EXPECT_EQ(session.itemsOfOthers().lookUp("com.quorvent.Tarvel"), std::nullopt);
}

TEST_F(SecretServiceKeychainTest, WhatAnotherProgramWroteIsRead)
{
    open();
    session.itemsOfOthers().store(ACCOUNT, "from outside");
    EXPECT_TRUE(becomes("from outside"));

    session.itemsOfOthers().store(ACCOUNT, "changed");
    EXPECT_TRUE(becomes("changed"));
}

TEST_F(SecretServiceKeychainTest, RemoveAllLeavesItemsOfOtherSchemasAlone)
{
    open();
    addItem("value");
    ASSERT_EQ(session.run({FOREIGN_ITEM, "store", "kept"}), 0);

    EXPECT_EQ(items->removeAll(), KeychainStatus::NoError);
    EXPECT_TRUE(session.waitForStoredItem(std::nullopt));
    EXPECT_EQ(session.run({FOREIGN_ITEM, "holds", "kept"}), 0);
}

TEST_F(SecretServiceKeychainTest, ANewValueLeavesNoOtherItemOfItsAccountBehind)
{
    open();
    addItem("old");
    ASSERT_EQ(session.run({FOREIGN_ITEM, "twin", ACCOUNT}), 0);

    EXPECT_EQ(items->remove(ACCOUNT), KeychainStatus::NoError);
    EXPECT_EQ(items->add(ACCOUNT, bytes("new")), KeychainStatus::NoError);
    items.reset();

    EXPECT_EQ(session.storedItem(), "new");
    EXPECT_EQ(session.run({FOREIGN_ITEM, "no-twin", ACCOUNT}), 0);
}

TEST_F(SecretServiceKeychainTest, HangingKeyringIsAnsweredFromWhatIsKnownAndGetsTheWritesLater)
{
    open();
    addItem("before");
    session.keyringProcess().signal(SIGSTOP);

    EXPECT_EQ(textOf(*items, ACCOUNT), "before");
    EXPECT_EQ(items->remove(ACCOUNT), KeychainStatus::NoError);
    EXPECT_EQ(items->add(ACCOUNT, bytes("meanwhile")), KeychainStatus::NoError);
    EXPECT_EQ(textOf(*items, ACCOUNT), "meanwhile");
    ASSERT_FALSE(session.lines().empty());
    EXPECT_THAT(session.lines().back(), HasSubstr("does not answer"));

    session.keyringProcess().signal(SIGCONT);
    EXPECT_TRUE(session.waitForStoredItem("meanwhile"));
}

TEST_F(SecretServiceKeychainTest, VanishedKeyringIsAnsweredFromWhatIsKnownAndFollowedWhenItReturns)
{
    open();
    addItem("before");
    session.stopKeyring();

    EXPECT_EQ(textOf(*items, ACCOUNT), "before");
    EXPECT_EQ(items->remove(ACCOUNT), KeychainStatus::NoError);
    EXPECT_EQ(items->add(ACCOUNT, bytes("meanwhile")), KeychainStatus::NoError);
    EXPECT_EQ(textOf(*items, ACCOUNT), "meanwhile");

    session.startKeyring();
    EXPECT_TRUE(session.waitForStoredItem("meanwhile"));
    EXPECT_EQ(textOf(*items, ACCOUNT), "meanwhile");
}

TEST_F(SecretServiceKeychainTest, KeyringThatReturnsLockedNeverReadsAsEmpty)
{
    open();
    addItem("before");
    session.stopKeyring();
    session.startLockedKeyring();

    EXPECT_EQ(textOf(*items, ACCOUNT), "before");
    EXPECT_EQ(items->add(ACCOUNT, bytes("other")), KeychainStatus::DuplicateItem);
    EXPECT_EQ(items->remove(ACCOUNT), KeychainStatus::NoError);
    EXPECT_EQ(items->add(ACCOUNT, bytes("meanwhile")), KeychainStatus::NoError);
    EXPECT_EQ(textOf(*items, ACCOUNT), "meanwhile");

    session.stopKeyring();
    session.startKeyring();
    EXPECT_TRUE(session.waitForStoredItem("meanwhile"));
}

TEST_F(SecretServiceKeychainTest, BusThatGoesEndsNothingAndIsFollowedWhenItReturns)
{
    open();
    addItem("before");
    session.stopBus();

    EXPECT_EQ(textOf(*items, ACCOUNT), "before");
    EXPECT_EQ(items->remove(ACCOUNT), KeychainStatus::NoError);
    EXPECT_EQ(items->add(ACCOUNT, bytes("meanwhile")), KeychainStatus::NoError);
    EXPECT_EQ(textOf(*items, ACCOUNT), "meanwhile");

    session.startBus();
    session.startKeyring();
    EXPECT_TRUE(session.waitForStoredItem("meanwhile"));
}

TEST_F(SecretServiceKeychainTest, ItemThatTheUserDeletedInAnOpenKeyringIsGone)
{
    open();
    addItem("value");
    const auto other = session.open();
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(other->remove(ACCOUNT), KeychainStatus::NoError);

    EXPECT_TRUE(becomes(std::nullopt));
}

TEST_F(SecretServiceKeychainTest, KeyringWithoutAnyCollectionReadsEmptyAndWritesAreNotLost)
{
    session.startLockedKeyring(); // with nothing that it could have locked
    items = session.open();
    ASSERT_NE(items, nullptr) << session.refusal();

    EXPECT_EQ(textOf(*items, ACCOUNT), std::nullopt);
    // On a busy machine an answer may be late, which is said; nothing else is.
    EXPECT_THAT(session.lines(), Each(HasSubstr("answer")));
    // Nobody shows the prompt for the password of a new collection here.
    EXPECT_EQ(items->add(ACCOUNT, bytes("first")), KeychainStatus::NoError);
    EXPECT_EQ(textOf(*items, ACCOUNT), "first");

    session.stopKeyring();
    session.startKeyring();
    EXPECT_TRUE(session.waitForStoredItem("first"));
}

TEST_F(SecretServiceKeychainTest, EndWaitsForWhatTheKeyringStillTakes)
{
    open();
    session.keyringProcess().signal(SIGSTOP);
    EXPECT_EQ(items->add(ACCOUNT, bytes("last")), KeychainStatus::NoError);
    session.keyringProcess().signal(SIGCONT);
    items.reset();

    EXPECT_EQ(session.storedItem(), "last");
}

} // namespace
