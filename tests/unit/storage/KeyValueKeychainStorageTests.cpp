#include "fakes/FakePlatform.h"
#include "fakes/Secrets.h"
#include "storage/KeyValueKeychainStorage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::IsEmpty;

class KeyValueKeychainStorageTest : public testing::Test
{
protected:
    fakes::FakePlatform platform;
    storage::KeyValueKeychainStorage storage;
};

} // namespace

TEST_F(KeyValueKeychainStorageTest, AKeyNeverWrittenReadsAsEmpty)
{
    EXPECT_EQ(storage.getValue("Password"), "");
}

TEST_F(KeyValueKeychainStorageTest, TheAccountIsTheIdentifierAndTheKeyInParentheses)
{
    storage.setValue("Password", "p\u00E4ss");

    ASSERT_EQ(platform.keychainItems.items.size(), 1U);
    const auto& [account, data] = *platform.keychainItems.items.begin();
    EXPECT_EQ(account, "com.quorvent.Tarvel (Password)");
    EXPECT_EQ(data, (platform::Bytes{'p', 0xC3, 0xA4, 's', 's'}));
}

TEST_F(KeyValueKeychainStorageTest, TheLastOfTwoWritesIsTheOnlyItem)
{
    storage.setValue("Password", "x");
    storage.setValue("Password", "y");

    EXPECT_EQ(platform.keychainItems.items.size(), 1U);
    EXPECT_EQ(storage.getValue("Password"), "y");
}

TEST_F(KeyValueKeychainStorageTest, TheEmptyStringIsStoredAsAnEmptyItem)
{
    storage.setValue("Password", "");

    EXPECT_EQ(fakes::secret(platform, "Password"), "");
    EXPECT_EQ(storage.getValue("Password"), "");
}

TEST_F(KeyValueKeychainStorageTest, TwoApplicationsNeverSeeEachOthersValues)
{
    storage.setValue("Password", "mine");
    platform.bundles.main.identifier = "com.example.Other";

    EXPECT_EQ(storage.getValue("Password"), "");
    storage.setValue("Password", "theirs");
    storage.removeValue("Applications");

    EXPECT_EQ(fakes::secret(platform, "Password"), "mine");
}

TEST_F(KeyValueKeychainStorageTest, BytesThatAreNotUtf8ReadAsEmpty)
{
    platform.keychainItems.items[fakes::accountOf("Password")] = {'a', 0xFF};

    EXPECT_EQ(storage.getValue("Password"), "");
}

TEST_F(KeyValueKeychainStorageTest, AResultThatIsNoDataObjectReadsAsEmpty)
{
    fakes::storeSecret(platform, "Password", "secret");
    platform.keychainItems.notADataObject = true;

    EXPECT_EQ(storage.getValue("Password"), "");
}

TEST_F(KeyValueKeychainStorageTest, ATextThatIsNotUtf8IsNotWritten)
{
    fakes::storeSecret(platform, "Password", "secret");

    storage.setValue("Password", "a\xFF");

    EXPECT_EQ(fakes::secret(platform, "Password"), "secret");
    EXPECT_THAT(platform.calls, IsEmpty());
}

TEST_F(KeyValueKeychainStorageTest, AFailedAddLeavesTheKeyAbsent)
{
    storage.setValue("Password", "x");
    platform.keychainItems.failingAdd = true;

    storage.setValue("Password", "y");

    EXPECT_EQ(storage.getValue("Password"), "");
}

TEST_F(KeyValueKeychainStorageTest, AFailingKeychainIsSilent)
{
    storage.setValue("Password", "x");
    platform.keychainItems.failing = true;

    EXPECT_EQ(storage.getValue("Password"), "");
    storage.setValue("Password", "y");
    storage.removeValue("Password");

    EXPECT_EQ(fakes::secret(platform, "Password"), "x");
    EXPECT_THAT(platform.log.lines, IsEmpty());
    EXPECT_THAT(platform.log.diagnostics, IsEmpty());
}

TEST_F(KeyValueKeychainStorageTest, RemovingAnAbsentKeyDoesNothing)
{
    fakes::storeSecret(platform, "Applications", "a;");

    storage.removeValue("Password");

    EXPECT_EQ(fakes::secret(platform, "Applications"), "a;");
    EXPECT_THAT(platform.log.lines, IsEmpty());
    EXPECT_THAT(platform.log.diagnostics, IsEmpty());
}

TEST_F(KeyValueKeychainStorageTest, RemovingDeletesTheItem)
{
    fakes::storeSecret(platform, "Password", "secret");

    storage.removeValue("Password");

    EXPECT_EQ(fakes::secret(platform, "Password"), std::nullopt);
}

TEST_F(KeyValueKeychainStorageTest, WithoutAnIdentifierTheProcessStopsRatherThanWriteAnonymously)
{
    platform.bundles.main.identifier.reset();

    EXPECT_DEATH(storage.setValue("Password", "x"), "the main bundle has no identifier");
    EXPECT_DEATH(storage.getValue("Password"), "the main bundle has no identifier");
    EXPECT_DEATH(storage.removeValue("Password"), "the main bundle has no identifier");
}
