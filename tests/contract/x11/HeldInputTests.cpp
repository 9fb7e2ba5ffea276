// How the capture comes when others hold the input, or take it away.
#include "CaptureFixture.h"
#include "HoldingClient.h"
#include "MasterDevices.h"
#include "Terminal.h"
#include "linux/x11/InputCapture.h"

#include <chrono>
#include <iostream>
#include <string_view>

#include <gmock/gmock.h>

namespace {

class HeldInput : public Capture
{
};

TEST_F(HeldInput, ComesAsSoonAsAnotherHolderLetsGo)
{
    HoldingClient holder(display);
    lock();
    ASSERT_TRUE(world.mainLoop.runUntil([this] { return world.allCovered(); }));
    EXPECT_FALSE(world.guard.captured());
    holder.letGo();
    EXPECT_TRUE(world.capturedSoon());
}

TEST_F(HeldInput, AnOpenMenuThatHoldsTheKeyboardIsClosedByEscape)
{
    HoldingClient menu(display);
    lock();
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(world.mainLoop.runUntil([&] {
        menu.turn();
        return world.guard.captured();
    }));
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    std::cout << "captured " << taken.count() << " s after the lock came over a menu\n";
    EXPECT_FALSE(menu.holds());
    EXPECT_EQ(1, menu.keysSeen());
    EXPECT_LT(taken.count(), 0.8);
}

TEST_F(HeldInput, WhoTakesTheFocusMeanwhileDoesNotKeepIt)
{
    Terminal terminal(world);
    ASSERT_TRUE(terminal.hasFocusSoon());
    HoldingClient holder(display, 1000);
    lock();
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    ASSERT_TRUE(takesKeysSoon(window));

    desktop::XConnection other(display);
    xcb_set_input_focus(
        other.get(), XCB_INPUT_FOCUS_PARENT, terminal.windowSoon(), XCB_CURRENT_TIME
    );
    other.sync();
    EXPECT_TRUE(takesKeysSoon(window));
    EXPECT_FALSE(world.guard.captured());
}

TEST_F(HeldInput, MenusWithinMenusAreClosedOneByOne)
{
    HoldingClient menu(display, 3);
    lock();
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(world.mainLoop.runUntil([&] {
        menu.turn();
        return world.guard.captured();
    }));
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    std::cout << "captured " << taken.count() << " s after the lock came over three menus\n";
    EXPECT_EQ(3, menu.keysSeen());
    EXPECT_LT(taken.count(), 1.5);
}

TEST_F(HeldInput, WhoIsNoMenuIsLeftAloneAfterSomeEscapesAndTheGrabsAreTriedOn)
{
    HoldingClient locker(display, 1000);
    const auto connection = x11::Connection::open(display);
    x11::InputCapture capture(*connection, [](std::string_view /*line*/) {});
    const auto attemptFor = [&](std::chrono::seconds duration) {
        const auto end = *capture.due() + duration;
        while (*capture.due() < end) {
            capture.attempt(*capture.due());
            locker.turn();
        }
    };
    capture.begin();
    attemptFor(std::chrono::minutes(1));
    EXPECT_EQ(x11::InputCapture::MOST_ESCAPES, locker.keysSeen());
    EXPECT_FALSE(capture.complete());

    locker.letGo();
    attemptFor(std::chrono::seconds(1));
    EXPECT_TRUE(capture.complete());
    capture.end();
    const x11::Reply<xcb_get_input_focus_reply_t> done(xcb_get_input_focus_reply(
        connection->get(), xcb_get_input_focus(connection->get()), nullptr
    ));

    HoldingClient menu(display, 2); // the next one is not blamed for the last
    capture.begin();
    const auto end = *capture.due() + std::chrono::seconds(5);
    while (!capture.complete() && *capture.due() < end) {
        capture.attempt(*capture.due());
        menu.turn();
    }
    EXPECT_TRUE(capture.complete());
    EXPECT_EQ(2, menu.keysSeen());
}

TEST_F(HeldInput, TheEscapeIsNotTakenForAKeyOfTheUser)
{
    HoldingClient menu(display);
    lock();
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    ASSERT_TRUE(world.mainLoop.runUntil([&] {
        menu.turn();
        return world.guard.captured();
    }));
    input.type("z");
    ASSERT_TRUE(typedSoon(window, "z"));
    EXPECT_EQ('z', static_cast<int>(window.typedText().back()));
    const xcb_keycode_t first = window.events().front().detail;
    for (const xcb_key_press_event_t& event : window.events()) {
        EXPECT_EQ(first, event.detail);
    }
}

TEST_F(HeldInput, AMissingCaptureIsReportedOnceAndItsComingToo)
{
    {
        HoldingClient holder(display);
        lock();
        ASSERT_TRUE(world.mainLoop.runUntil([this] { return world.reports.count() >= 1; }));
        holder.letGo();
    }
    ASSERT_TRUE(world.mainLoop.runUntil([this] { return world.reports.count() >= 2; }));
    EXPECT_THAT(
        world.reports.all(),
        testing::ElementsAre(
            "the keyboard is held by another program and not captured yet; trying on",
            "keyboard and pointer are captured now"
        )
    );
}

TEST_F(HeldInput, MasterDevicesThatAreAddedDuringALockAreHeldToo)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    desktop::XConnection other(display);
    SecondMasters masters(other);
    ASSERT_EQ(2U, masters.keyboards().size());
    for (const xcb_input_device_id_t keyboard : masters.keyboards()) {
        EXPECT_TRUE(world.mainLoop.runUntil([&] {
            return masters.grabStatus(keyboard) == XCB_GRAB_STATUS_ALREADY_GRABBED;
        }));
    }
    EXPECT_TRUE(world.guard.captured());
}

TEST_F(HeldInput, IsTakenAgainWhenTheServerBreaksIt)
{
    // The server's own way to break every grab, as an administrator can allow it.
    auto keyboard = world.session.start({"setxkbmap", "-option", "grab:break_actions"});
    ASSERT_EQ(0, keyboard.waitForExitStatus(std::chrono::seconds(10)));
    lock();
    ASSERT_TRUE(world.capturedSoon());
    desktop::XConnection other(display);
    SecondMasters masters(other);
    constexpr std::uint32_t KEYPAD_DIVIDE = 0xffaf;
    input.press(KEYPAD_DIVIDE, {desktop::KEY_CONTROL, desktop::KEY_ALT});
    for (const xcb_input_device_id_t device : masters.keyboards()) {
        EXPECT_TRUE(world.mainLoop.runUntil([&] {
            return masters.grabStatus(device) == XCB_GRAB_STATUS_ALREADY_GRABBED;
        }));
    }
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    input.type("again");
    EXPECT_TRUE(typedSoon(window, "again"));
}

} // namespace
