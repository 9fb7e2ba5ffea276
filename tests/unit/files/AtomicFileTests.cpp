#include "desktop/TemporaryFolder.h"
#include "linux/files/AtomicFile.h"

#include <cerrno>
#include <filesystem>
#include <iterator>
#include <string_view>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

constexpr unsigned MODE = 0600;

class AtomicFile : public testing::Test
{
protected:
    bool replace(std::string_view text) const
    {
        return files::replaceFile(path, std::as_bytes(std::span(text)), MODE);
    }

    /// How many names stand in the folder.
    std::ptrdiff_t names() const
    {
        return std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator());
    }

    desktop::TemporaryFolder folder;
    std::string path = folder.path("file");
};

} // namespace

TEST_F(AtomicFile, IsMadeWithTheModeAndReplacedAsAWhole)
{
    ASSERT_TRUE(replace("a longer text"));
    ASSERT_TRUE(replace("text"));

    EXPECT_EQ(desktop::readFile(path), "text");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(MODE));
    EXPECT_EQ(names(), 1);
}

TEST_F(AtomicFile, StaysAsItWasWhereNothingCanTakeItsPlace)
{
    fs::create_directories(path + "/inside");

    EXPECT_FALSE(replace("text"));

    EXPECT_EQ(errno, EISDIR);
    EXPECT_TRUE(fs::exists(path + "/inside"));
    EXPECT_EQ(names(), 1);
}

TEST_F(AtomicFile, WhereThereIsNoFolderSaysWhy)
{
    const std::string elsewhere = folder.path("missing/file");

    EXPECT_FALSE(files::replaceFile(elsewhere, {}, MODE));

    EXPECT_EQ(errno, ENOENT);
}

TEST_F(AtomicFile, NeverWritesThroughALinkThatWaitsUnderTheNameOfTheDraft)
{
    const std::string other = folder.write("other", "untouched");
    fs::create_symlink(other, files::draftOf(path));

    ASSERT_TRUE(replace("text"));

    EXPECT_EQ(desktop::readFile(other), "untouched");
    EXPECT_EQ(desktop::readFile(path), "text");
    EXPECT_FALSE(fs::is_symlink(path));
}

TEST_F(AtomicFile, FlushOfAFolderThatIsNotThereFails)
{
    EXPECT_FALSE(files::flushFolder(folder.path("missing")));
    EXPECT_TRUE(files::flushFolder(folder.path("")));
}
