#include "desktop/TemporaryFolder.h"
#include "linux/secretservice/KeptMarker.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace secretservice {
namespace {

TEST(KeptMarker, IsSetForEverOnceItWasSet)
{
    const desktop::TemporaryFolder home;
    KeptMarker marker(home.path() / "data" / "mark");

    EXPECT_FALSE(marker.isSet());
    EXPECT_EQ(marker.set(), std::nullopt);
    EXPECT_EQ(marker.set(), std::nullopt);
    EXPECT_TRUE(KeptMarker(home.path() / "data" / "mark").isSet());
}

TEST(KeptMarker, RemembersWhetherThereAreItems)
{
    const desktop::TemporaryFolder home;
    const std::filesystem::path file = home.path() / "data" / "mark";
    KeptMarker marker(file);
    EXPECT_FALSE(marker.holdsItems());

    EXPECT_EQ(marker.set(), std::nullopt);
    EXPECT_FALSE(marker.holdsItems());

    EXPECT_EQ(marker.note(true), std::nullopt);
    EXPECT_EQ(marker.set(), std::nullopt);
    EXPECT_TRUE(KeptMarker(file).holdsItems());

    EXPECT_EQ(marker.note(false), std::nullopt);
    EXPECT_FALSE(KeptMarker(file).holdsItems());
    EXPECT_TRUE(KeptMarker(file).isSet());
}

TEST(KeptMarker, CountsAsSetWhenItCannotBeTold)
{
    const desktop::TemporaryFolder home;
    desktop::writeFile(home.path() / "data", "a file where the folder should be");

    EXPECT_TRUE(KeptMarker(home.path() / "data" / "mark").isSet());
}

TEST(KeptMarker, SaysWhyItCannotBeSet)
{
    const desktop::TemporaryFolder home;
    std::filesystem::create_directory_symlink(home.path() / "nowhere", home.path() / "data");

    EXPECT_NE(KeptMarker(home.path() / "data" / "mark").set(), std::nullopt);
}

} // namespace
} // namespace secretservice
