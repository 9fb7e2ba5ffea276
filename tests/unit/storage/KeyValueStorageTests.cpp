#include "fakes/FakePlatform.h"
#include "fakes/Secrets.h"
#include "storage/KeyValueStorage.h"

#include <variant>

#include <gtest/gtest.h>

namespace {

class KeyValueStorageTest : public testing::Test
{
protected:
    fakes::FakePlatform platform;
};

} // namespace

TEST_F(KeyValueStorageTest, KeepsValuesInTheKeychainByDefault)
{
    storage::KeyValueStorage storage;

    storage.setValue("Active", "0");

    EXPECT_EQ(fakes::secret(platform, "Active"), "0");
    EXPECT_TRUE(platform.userDefaults.values.empty());
    EXPECT_EQ(storage.getValue("Active"), "0");
}

TEST_F(KeyValueStorageTest, KeepsValuesInTheKeychainWhenAskedTo)
{
    storage::KeyValueStorage storage(true);

    storage.setValue("Active", "0");

    EXPECT_EQ(fakes::secret(platform, "Active"), "0");
}

TEST_F(KeyValueStorageTest, KeepsValuesInTheUserDefaultsOtherwise)
{
    storage::KeyValueStorage storage(false);

    storage.setValue("cbaal", "org.example.Alpha");

    EXPECT_TRUE(platform.keychainItems.items.empty());
    EXPECT_EQ(std::get<std::string>(platform.userDefaults.values.at("cbaal")), "org.example.Alpha");
    EXPECT_EQ(storage.getValue("cbaal"), "org.example.Alpha");
}

TEST_F(KeyValueStorageTest, RemovesFromItsEngine)
{
    storage::KeyValueStorage keychain(true);
    storage::KeyValueStorage defaults(false);
    keychain.setValue("key", "a");
    defaults.setValue("key", "b");

    keychain.removeValue("key");
    EXPECT_EQ(keychain.getValue("key"), "");
    EXPECT_EQ(defaults.getValue("key"), "b");

    defaults.removeValue("key");
    EXPECT_EQ(defaults.getValue("key"), "");
}
