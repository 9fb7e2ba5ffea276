#include "linux/workspace/GraphicalSession.h"

#include <gtest/gtest.h>

namespace {

const workspace::GraphicalSession SESSION{":1", "wayland-0"};

bool isForeign(
    const std::string& display,
    const std::vector<std::string>& arguments = {},
    const std::string& wayland = ""
)
{
    return SESSION.isForeign({.display = display, .waylandDisplay = wayland}, arguments);
}

} // namespace

TEST(GraphicalSession, ProcessOfAnotherDisplayIsForeign)
{
    EXPECT_TRUE(isForeign(":2"));
    EXPECT_TRUE(isForeign(":10"));
    EXPECT_TRUE(isForeign("far.example:1"));
    EXPECT_TRUE(isForeign(":2", {"xterm", "-e", "x"}));
}

TEST(GraphicalSession, ProcessOfThisDisplayIsNot)
{
    EXPECT_FALSE(isForeign(":1"));
    EXPECT_FALSE(isForeign(":1.0"));
    EXPECT_FALSE(isForeign("unix:1"));
    EXPECT_FALSE(isForeign(":2", {}, "wayland-0"));
}

TEST(GraphicalSession, LeavingTheDisplayOutHidesNothing)
{
    EXPECT_FALSE(isForeign(""));
}

TEST(GraphicalSession, DisplayAmongTheArgumentsCounts)
{
    EXPECT_FALSE(isForeign(":2", {"xterm", "-display", ":1"}));
    EXPECT_FALSE(isForeign(":2", {"mousepad", "--display=:1.0"}));
}

TEST(GraphicalSession, WithoutADisplayOfItsOwnNothingIsForeign)
{
    EXPECT_FALSE(workspace::GraphicalSession().isForeign({.display = ":2"}, {}));
}
