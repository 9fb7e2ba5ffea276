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
    return SESSION.isForeign({.display = display, .waylandDisplay = wayland}, arguments, {});
}

/// A process without a display, below others that were given these ones.
bool isForeignBelow(const std::vector<std::string>& displays)
{
    std::vector<proc::ProcessEnvironment> ancestors;
    for (const std::string& display : displays) {
        ancestors.push_back({.display = display});
    }
    return SESSION.isForeign({}, {"x"}, [&] { return ancestors; });
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
    EXPECT_FALSE(isForeign("", {"mousepad", ":2"}));
    EXPECT_FALSE(isForeign("", {"xterm", "-display", ":1", "-e", "x", "--display", ":2"}));
}

TEST(GraphicalSession, WithoutADisplayTheOneAmongTheArgumentsCounts)
{
    EXPECT_TRUE(isForeign("", {"x11vnc", "-display", ":2"}));
    EXPECT_TRUE(isForeign("", {"x11vnc", "--display=:2.0"}));
    EXPECT_TRUE(isForeign("", {"x11vnc", "-display=unix:2"}));
    EXPECT_FALSE(isForeign("", {"x11vnc", "-display"}));
    EXPECT_FALSE(isForeign("", {"x11vnc", "-display", "none"}));
    EXPECT_FALSE(isForeign(":1", {"x11vnc", "-display", ":2"})) << "was started here";
}

TEST(GraphicalSession, WithoutADisplayThatOfItsAncestorsCounts)
{
    EXPECT_TRUE(isForeignBelow({":2"}));
    EXPECT_TRUE(isForeignBelow({"", "", ":2"}));
    EXPECT_FALSE(isForeignBelow({"", ""}));
    EXPECT_FALSE(isForeignBelow({":2", ":1"})) << "somebody here gave it away";
    EXPECT_FALSE(isForeignBelow({":1", ":2"}));
}

TEST(GraphicalSession, AncestorsOfAProcessWithADisplayAreNotLookedAt)
{
    const auto neverAsked = []() -> std::vector<proc::ProcessEnvironment> {
        ADD_FAILURE();
        return {};
    };

    EXPECT_TRUE(SESSION.isForeign({.display = ":2"}, {"x"}, neverAsked));
    EXPECT_FALSE(SESSION.isForeign({.display = ":1"}, {"x"}, neverAsked));
}

TEST(GraphicalSession, DisplayAmongTheArgumentsCounts)
{
    EXPECT_FALSE(isForeign(":2", {"xterm", "-display", ":1"}));
    EXPECT_FALSE(isForeign(":2", {"mousepad", "--display=:1.0"}));
}

TEST(GraphicalSession, WithoutADisplayOfItsOwnNothingIsForeign)
{
    EXPECT_FALSE(workspace::GraphicalSession().isForeign({.display = ":2"}, {}, {}));
}
