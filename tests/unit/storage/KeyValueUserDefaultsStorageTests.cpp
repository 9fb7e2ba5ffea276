#include "fakes/FakePlatform.h"
#include "storage/KeyValueUserDefaultsStorage.h"

#include <cstdint>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class KeyValueUserDefaultsStorageTest : public testing::Test
{
protected:
    fakes::FakePlatform platform;
    storage::KeyValueUserDefaultsStorage storage;
};

} // namespace

TEST_F(KeyValueUserDefaultsStorageTest, AKeyNeverWrittenReadsAsEmpty)
{
    EXPECT_EQ(storage.getValue("cbaal"), "");
}

TEST_F(KeyValueUserDefaultsStorageTest, EveryWriteIsMadeDurable)
{
    storage.setValue("cbaal", "x");
    storage.setValue("cbaal", "y");

    EXPECT_EQ(storage.getValue("cbaal"), "y");
    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "userDefaults setValue cbaal x",
            "userDefaults synchronize",
            "userDefaults setValue cbaal y",
            "userDefaults synchronize"
        )
    );
}

TEST_F(KeyValueUserDefaultsStorageTest, EveryRemovalIsMadeDurable)
{
    storage.setValue("cbaal", "x");
    platform.calls.clear();

    storage.removeValue("cbaal");

    EXPECT_EQ(storage.getValue("cbaal"), "");
    EXPECT_THAT(
        platform.calls, ElementsAre("userDefaults removeObject cbaal", "userDefaults synchronize")
    );
}

TEST_F(KeyValueUserDefaultsStorageTest, AValueOfAnotherTypeReadsAsEmpty)
{
    platform.userDefaults.values["flag"] = true;
    platform.userDefaults.values["number"] = std::int64_t{7};
    platform.userDefaults.values["real"] = 0.5;
    platform.userDefaults.values["list"] = platform::OpaqueValue{};

    EXPECT_EQ(storage.getValue("flag"), "");
    EXPECT_EQ(storage.getValue("number"), "");
    EXPECT_EQ(storage.getValue("real"), "");
    EXPECT_EQ(storage.getValue("list"), "");
}

TEST_F(KeyValueUserDefaultsStorageTest, RemovingAnAbsentKeyDoesNothing)
{
    platform.userDefaults.values["other"] = std::string("kept");

    storage.removeValue("cbaal");

    EXPECT_EQ(storage.getValue("other"), "kept");
    EXPECT_THAT(platform.log.diagnostics, IsEmpty());
}

TEST_F(KeyValueUserDefaultsStorageTest, AFailingDatabaseIsSilent)
{
    platform.userDefaults.failing = true;

    storage.setValue("cbaal", "x");

    EXPECT_EQ(storage.getValue("cbaal"), "");
    EXPECT_THAT(platform.log.lines, IsEmpty());
    EXPECT_THAT(platform.log.diagnostics, IsEmpty());
}
