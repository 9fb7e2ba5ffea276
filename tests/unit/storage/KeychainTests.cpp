#include "fakes/FakePlatform.h"
#include "storage/Keychain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using platform::Bytes;
using storage::Keychain;
using testing::ElementsAre;

TEST(Keychain, SavingIsDeletingThenAdding)
{
    fakes::FakePlatform platform;

    EXPECT_TRUE(Keychain::save("account", Bytes{1, 2}));

    EXPECT_THAT(platform.calls, ElementsAre("keychain remove account", "keychain add account"));
    EXPECT_EQ(Keychain::load("account"), (Bytes{1, 2}));
}

TEST(Keychain, SavingAgainLeavesOneItem)
{
    const fakes::FakePlatform platform;

    EXPECT_TRUE(Keychain::save("account", Bytes{1}));
    EXPECT_TRUE(Keychain::save("account", Bytes{2}));

    EXPECT_EQ(platform.keychainItems.items.size(), 1U);
    EXPECT_EQ(Keychain::load("account"), Bytes{2});
}

TEST(Keychain, AFailedAddIsAFailedSaveAndLeavesNothing)
{
    fakes::FakePlatform platform;
    EXPECT_TRUE(Keychain::save("account", Bytes{1}));
    platform.keychainItems.failingAdd = true;

    EXPECT_FALSE(Keychain::save("account", Bytes{2}));

    EXPECT_EQ(Keychain::load("account"), std::nullopt);
}

TEST(Keychain, LoadingGivesNothingForAnAbsentAccount)
{
    const fakes::FakePlatform platform;

    EXPECT_EQ(Keychain::load("account"), std::nullopt);
}

TEST(Keychain, LoadingGivesNothingWhenTheResultIsNoDataObject)
{
    fakes::FakePlatform platform;
    EXPECT_TRUE(Keychain::save("account", Bytes{1}));
    platform.keychainItems.notADataObject = true;

    EXPECT_EQ(Keychain::load("account"), std::nullopt);
}

TEST(Keychain, LoadingGivesNothingWhenTheKeychainFails)
{
    fakes::FakePlatform platform;
    EXPECT_TRUE(Keychain::save("account", Bytes{1}));
    platform.keychainItems.failing = true;

    EXPECT_EQ(Keychain::load("account"), std::nullopt);
}

TEST(Keychain, RemovingReportsWhetherAnItemWasDeleted)
{
    const fakes::FakePlatform platform;
    EXPECT_TRUE(Keychain::save("account", Bytes{1}));

    EXPECT_TRUE(Keychain::remove("account"));
    EXPECT_FALSE(Keychain::remove("account"));
}

TEST(Keychain, ClearingDeletesEveryItem)
{
    const fakes::FakePlatform platform;
    EXPECT_TRUE(Keychain::save("first", Bytes{1}));
    EXPECT_TRUE(Keychain::save("second", Bytes{2}));

    EXPECT_TRUE(Keychain::clear());
    EXPECT_TRUE(platform.keychainItems.items.empty());
    EXPECT_FALSE(Keychain::clear());
}
