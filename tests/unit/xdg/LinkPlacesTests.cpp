// The links on the way to a file.
#include "desktop/TemporaryFolder.h"
#include "linux/xdg/LinkPlaces.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using xdg::LinkPlace;

class LinkPlaces : public testing::Test
{
protected:
    std::vector<LinkPlace> of(const std::string& path) const
    {
        return xdg::linkPlaces(folder.path(path));
    }

    LinkPlace place(const std::string& inFolder, const std::string& name) const
    {
        return {folder.path(inFolder), name};
    }

    desktop::TemporaryFolder folder;
};

} // namespace

TEST_F(LinkPlaces, PathWithoutLinksHasNone)
{
    folder.write("a/b", "");

    EXPECT_TRUE(of("a/b").empty());
    EXPECT_TRUE(of("a/missing/b").empty());
    EXPECT_TRUE(xdg::linkPlaces("/").empty());
}

TEST_F(LinkPlaces, EveryLinkOfAChainIsNamedInTheFolderInWhichItStands)
{
    folder.write("opt/two/program", "");
    fs::create_symlink("two", folder.path("opt/current"));
    fs::create_directories(folder.path("alternatives"));
    fs::create_symlink(folder.path("opt/current/program"), folder.path("alternatives/foo"));
    fs::create_directories(folder.path("bin"));
    fs::create_symlink("../alternatives/./foo", folder.path("bin/foo"));

    EXPECT_EQ(
        of("bin/foo"),
        (std::vector{place("bin", "foo"), place("alternatives", "foo"), place("opt", "current")})
    );
}

TEST_F(LinkPlaces, LinkThatLeadsNowhereIsNamedAndACircleEnds)
{
    fs::create_symlink("missing", folder.path("nowhere"));
    fs::create_symlink("circle", folder.path("circle"));

    EXPECT_EQ(of("nowhere/x").size(), 1U);
    EXPECT_EQ(of("circle").size(), 40U);
}
