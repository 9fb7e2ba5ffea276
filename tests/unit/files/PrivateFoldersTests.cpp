#include "desktop/TemporaryFolder.h"
#include "linux/files/PrivateFolders.h"

#include <cerrno>
#include <filesystem>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

class PrivateFolders : public testing::Test
{
protected:
    desktop::TemporaryFolder folder;
};

} // namespace

TEST_F(PrivateFolders, AreMadeForTheUserAloneWithThoseAboveThem)
{
    ASSERT_TRUE(files::makePrivateFolders(folder.path() / "above" / "below"));

    EXPECT_EQ(fs::status(folder.path() / "above").permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(folder.path() / "above" / "below").permissions(), fs::perms::owner_all);
}

TEST_F(PrivateFolders, StayAsTheyAreWhereTheyAreThere)
{
    const fs::path open = folder.path() / "open";
    fs::create_directory(open);
    fs::permissions(open, fs::perms::all);

    EXPECT_TRUE(files::makePrivateFolders(open));
    EXPECT_EQ(fs::status(open).permissions(), fs::perms::all);
}

TEST_F(PrivateFolders, MayBeReachedByALink)
{
    fs::create_directory(folder.path() / "real");
    fs::create_directory_symlink(folder.path() / "real", folder.path() / "link");

    EXPECT_TRUE(files::makePrivateFolders(folder.path() / "link"));
    EXPECT_TRUE(files::makePrivateFolders(folder.path() / "link" / "below"));
    EXPECT_TRUE(fs::is_directory(folder.path() / "real" / "below"));
}

TEST_F(PrivateFolders, AreNotMadeInThePlaceOfSomethingElse)
{
    folder.write("file", "text");
    fs::create_symlink(folder.path() / "nowhere", folder.path() / "dangling");

    for (const char* name : {"file", "dangling"}) {
        EXPECT_FALSE(files::makePrivateFolders(folder.path() / name)) << name;
        EXPECT_EQ(errno, EEXIST) << name;
    }
    EXPECT_FALSE(files::makePrivateFolders(folder.path() / "file" / "below"));
    EXPECT_EQ(errno, ENOTDIR);
    EXPECT_EQ(desktop::readFile(folder.path() / "file"), "text");
}
