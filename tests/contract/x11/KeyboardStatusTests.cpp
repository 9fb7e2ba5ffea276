#include "X11World.h"

#include <chrono>

#include <gtest/gtest.h>

namespace {

class X11KeyboardStatus : public testing::Test
{
protected:
    void setLayouts(const std::vector<std::string>& arguments)
    {
        std::vector<std::string> command{"setxkbmap"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        auto process = world.session.start(command);
        ASSERT_EQ(0, process.waitForExitStatus(std::chrono::seconds(10)));
    }

    bool soon(const std::function<bool()>& condition) { return world.mainLoop.runUntil(condition); }

    X11World world;
    platform::KeyboardStatus& status = world.keyboardStatus;
};

TEST_F(X11KeyboardStatus, KnowsTheLayoutFromTheBeginning)
{
    EXPECT_EQ("us", status.layoutName());
    EXPECT_FALSE(status.capsLockOn());
}

TEST_F(X11KeyboardStatus, TellsWhenCapsLockGoesOnAndOff)
{
    int changes = 0;
    status.observe([&] { ++changes; });
    world.session.input().press(desktop::KEY_CAPS_LOCK);
    ASSERT_TRUE(soon([&] { return changes == 1; }));
    EXPECT_TRUE(status.capsLockOn());
    world.session.input().press(desktop::KEY_CAPS_LOCK);
    ASSERT_TRUE(soon([&] { return changes == 2; }));
    EXPECT_FALSE(status.capsLockOn());
}

TEST_F(X11KeyboardStatus, TellsCapsLockWhileTheKeyboardIsCaptured)
{
    world.application.setPresentationOptions(X11World::LOCKED);
    ASSERT_TRUE(world.capturedSoon());
    world.session.input().press(desktop::KEY_CAPS_LOCK);
    EXPECT_TRUE(soon([this] { return status.capsLockOn(); }));
}

TEST_F(X11KeyboardStatus, FollowsAnotherLayout)
{
    int changes = 0;
    status.observe([&] { ++changes; });
    setLayouts({"-layout", "de"});
    EXPECT_TRUE(soon([this] { return status.layoutName() == "de"; }));
    EXPECT_GE(changes, 1);
}

TEST_F(X11KeyboardStatus, FollowsTheActiveOneOfSeveralLayouts)
{
    setLayouts({"-layout", "us,fr", "-option", "grp:shifts_toggle"});
    constexpr std::uint32_t KEY_SHIFT_RIGHT = 0xFFE2;
    ASSERT_TRUE(soon([this] { return status.layoutName() == "us"; }));
    world.session.input().hold(desktop::KEY_SHIFT);
    world.session.input().hold(KEY_SHIFT_RIGHT);
    world.session.input().release(KEY_SHIFT_RIGHT);
    world.session.input().release(desktop::KEY_SHIFT);
    EXPECT_TRUE(soon([this] { return status.layoutName() == "fr"; }));
}

} // namespace
