// Where keys and clicks go while the screens are covered, with a real terminal underneath.
#include "CaptureFixture.h"
#include "Terminal.h"

namespace {

TEST_F(Capture, NoKeyReachesTheApplicationAndEveryKeyReachesTheLockWindowInOrder)
{
    world.windowSystem.start();
    Terminal terminal(world);
    ASSERT_TRUE(terminal.hasFocusSoon());
    input.type("before");
    input.press(desktop::KEY_RETURN);
    ASSERT_TRUE(terminal.readsSoon("before\n"));

    lock();
    ASSERT_TRUE(world.capturedSoon());
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    const std::string password = "Correct Horse 42, Battery Staple!";
    input.type(password);
    input.press(desktop::KEY_RETURN);
    EXPECT_TRUE(typedSoon(window, password));

    ASSERT_TRUE(world.windowSystem.bringForward(terminal.processIdentifier()));
    unlock();
    adopted->close();
    window.hide();
    ASSERT_TRUE(terminal.hasFocusSoon());
    input.type("after");
    input.press(desktop::KEY_RETURN);
    EXPECT_TRUE(terminal.readsSoon("before\nafter\n"));
}

TEST_F(Capture, KeysTypedBeforeThereIsALockWindowWaitForIt)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    input.type("Early");
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    input.type(" And Late");
    EXPECT_TRUE(typedSoon(window, "Early And Late"));
}

TEST_F(Capture, KeysTypedBeforeTheLockWindowIsShownWaitForThat)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    ToolkitWindow window(display, FRAME);
    const auto adopted = world.windows.adoptWindow(window.id(), world.lockAttributes(FRAME));
    adopted->makeKeyAndOrderFront();
    input.type("Hidden");
    EXPECT_EQ("", window.typedText());
    window.show();
    EXPECT_TRUE(typedSoon(window, "Hidden"));
}

TEST_F(Capture, TheLatestKeyWindowTakesTheKeysUntilItIsClosed)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    ToolkitWindow first(display, FRAME);
    ToolkitWindow second(display, FRAME);
    const auto adoptedFirst = adopt(first);
    const auto adoptedSecond = adopt(second);
    ASSERT_TRUE(takesKeysSoon(second));
    input.type("2");
    EXPECT_TRUE(typedSoon(second, "2"));
    adoptedSecond->close();
    second.hide();
    ASSERT_TRUE(takesKeysSoon(first));
    input.type("1");
    EXPECT_TRUE(typedSoon(first, "1"));
    EXPECT_EQ("2", second.typedText());
}

TEST_F(Capture, WhatWaitedForALockThatEndedIsForgotten)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    input.type("Gone");
    unlock();
    lock();
    ASSERT_TRUE(world.capturedSoon());
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    input.type("New");
    EXPECT_TRUE(typedSoon(window, "New"));
}

TEST_F(Capture, AKeyThatWasDownBeforeTheLockIsNotHandedOn)
{
    input.hold('x');
    lock();
    ASSERT_TRUE(world.capturedSoon());
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    input.release('x');
    input.type("y");
    ASSERT_TRUE(typedSoon(window, "y"));
    // Nothing of the first key: one press and one release.
    ASSERT_TRUE(world.mainLoop.runUntil([&] { return window.events().size() >= 2; }));
    EXPECT_EQ(2U, window.events().size());
}

TEST_F(Capture, AHeldKeyRepeatsAsReleaseAndPressOfTheSameTime)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    input.hold('r');
    ASSERT_TRUE(world.mainLoop.runUntil([&] { return window.events().size() >= 5; }));
    input.release('r');
    const auto& events = window.events();
    EXPECT_EQ(XCB_KEY_PRESS, events[0].response_type);
    EXPECT_EQ(XCB_KEY_RELEASE, events[1].response_type);
    EXPECT_EQ(XCB_KEY_PRESS, events[2].response_type);
    EXPECT_EQ(events[1].time, events[2].time);
    EXPECT_LT(events[0].time, events[1].time);
}

TEST_F(Capture, AClickReachesTheLockWindowWithItsPlaceInIt)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    constexpr platform::Rect PLACE{1280, 0, 1280, 720};
    ToolkitWindow window(display, FRAME);
    const auto adopted = world.windows.adoptWindow(window.id(), world.lockAttributes(PLACE));
    window.show();
    adopted->makeKeyAndOrderFront();
    input.type("k"); // once it arrives the window is the key window
    ASSERT_TRUE(typedSoon(window, "k"));
    input.click(10, 10); // on the other screen
    input.click(1400, 333);
    ASSERT_TRUE(world.mainLoop.runUntil([&] { return window.events().size() >= 4; }));
    const auto& events = window.events();
    EXPECT_EQ(XCB_BUTTON_PRESS, events[2].response_type);
    EXPECT_EQ(120, events[2].event_x);
    EXPECT_EQ(333, events[2].event_y);
    EXPECT_EQ(XCB_BUTTON_RELEASE, events[3].response_type);
    EXPECT_EQ(4U, events.size());
}

TEST_F(Capture, WindowManagerShortcutsDoNothing)
{
    Terminal terminal(world);
    ASSERT_TRUE(terminal.hasFocusSoon());
    lock();
    ASSERT_TRUE(world.capturedSoon());
    input.press(desktop::KEY_F4, {desktop::KEY_ALT}); // closes the active window
    unlock();
    input.type("alive");
    input.press(desktop::KEY_RETURN);
    EXPECT_TRUE(terminal.readsSoon("alive\n"));
}

} // namespace
