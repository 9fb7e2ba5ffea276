// Which presses of mouse buttons are other programs'.
#include "ForeignWindows.h"
#include "Terminal.h"
#include "X11World.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr std::uint8_t LEFT = 1;
constexpr std::uint8_t RIGHT = 3;
constexpr std::int16_t INSIDE = 20; // of a window

class MousePresses : public testing::Test
{
protected:
    MousePresses()
    {
        world.eventMonitors.addGlobalMonitor(
            platform::EVENT_MASK_LEFT_MOUSE_DOWN,
            [this](const platform::Event& event) { left.push_back(event.modifierFlags); }
        );
        world.eventMonitors.addGlobalMonitor(
            platform::EVENT_MASK_RIGHT_MOUSE_DOWN,
            [this](const platform::Event& event) { right.push_back(event.modifierFlags); }
        );
    }

    void click(const desktop::Rectangle& window, std::uint8_t button = LEFT)
    {
        world.session.input().click(
            static_cast<std::int16_t>(window.x + INSIDE),
            static_cast<std::int16_t>(window.y + INSIDE),
            button
        );
        settle();
    }

    void markSeen(const xcb_generic_event_t& event)
    {
        if (x11::typeOf(event) == XCB_PROPERTY_NOTIFY &&
            x11::as<xcb_property_notify_event_t>(event).atom == XCB_ATOM_WM_CLASS) {
            ++marks;
        }
    }

    /// All that the display told before was handled: the pointer may move on.
    void settle()
    {
        auto& connection = world.session.connection();
        xcb_change_property(
            connection.get(),
            XCB_PROP_MODE_REPLACE,
            connection.root(),
            XCB_ATOM_WM_CLASS,
            XCB_ATOM_STRING,
            8,
            0,
            nullptr
        );
        connection.sync();
        const std::size_t before = marks;
        ASSERT_TRUE(world.mainLoop.runUntil([&] { return marks > before; }));
    }

    /// Makes another program's window a panel's.
    void makePanel(xcb_window_t window)
    {
        auto& connection = world.session.connection();
        const xcb_atom_t dock = connection.atom("_NET_WM_WINDOW_TYPE_DOCK");
        xcb_change_property(
            connection.get(),
            XCB_PROP_MODE_REPLACE,
            window,
            connection.atom("_NET_WM_WINDOW_TYPE"),
            XCB_ATOM_ATOM,
            32,
            1,
            &dock
        );
        connection.sync();
    }

    void swapButtons()
    {
        xcb_connection_t* connection = world.session.connection().get();
        const desktop::Reply<xcb_get_pointer_mapping_reply_t> now(
            xcb_get_pointer_mapping_reply(connection, xcb_get_pointer_mapping(connection), nullptr)
        );
        std::uint8_t* map = xcb_get_pointer_mapping_map(now.get());
        std::swap(map[LEFT - 1], map[RIGHT - 1]);
        const desktop::Reply<xcb_set_pointer_mapping_reply_t> set(xcb_set_pointer_mapping_reply(
            connection, xcb_set_pointer_mapping(connection, now->map_len, map), nullptr
        ));
        ASSERT_TRUE(set && set->status == XCB_MAPPING_STATUS_SUCCESS);
    }

    /// Of another program.
    Terminal& terminal()
    {
        if (!other.has_value()) {
            other.emplace(world);
        }
        return *other;
    }

    desktop::Rectangle place() { return world.session.windows().placeOf(terminal().windowSoon()); }

    /// A place in the title bar above a window, for a click.
    desktop::Rectangle frameOf(xcb_window_t window)
    {
        constexpr int ABOVE = 6;
        const desktop::Rectangle inner = world.session.windows().placeOf(window);
        return {inner.x, static_cast<std::int16_t>(inner.y - INSIDE - ABOVE), 1, 1};
    }

    X11World world{true};
    std::optional<Terminal> other;
    std::size_t marks = 0;
    x11::X11Desktop::Subscription subscription = world.display.subscribe( // after the monitors'
        [this](const xcb_generic_event_t& event) { markSeen(event); }
    );
    std::vector<std::uint64_t> left;
    std::vector<std::uint64_t> right;
};

TEST_F(MousePresses, OnesOnTheDesktopItselfAreHeard)
{
    click({0, 600, 1, 1});
    EXPECT_EQ(1U, left.size());
}

TEST_F(MousePresses, OnesInThisProgramsWindowsAreNotOthers)
{
    ForeignWindows ours(world.session.server().displayName()); // of this process
    ours.mapAndRaise(ours.create(100, 100));
    click({100, 100, 1, 1});
    EXPECT_TRUE(left.empty());
}

TEST_F(MousePresses, OnesInThisProgramsWindowInsideOfAnothersAreNotOthers)
{
    ForeignWindows ours(world.session.server().displayName());
    const xcb_window_t window = ours.create(0, 0);
    xcb_reparent_window(ours.display().get(), window, terminal().windowSoon(), 0, 0);
    ours.mapAndRaise(window);
    click(world.session.windows().placeOf(window));
    EXPECT_TRUE(left.empty());
}

TEST_F(MousePresses, OnesInTheFrameOfThisProgramsWindowAreNotOthers)
{
    ForeignWindows ours(world.session.server().displayName());
    const xcb_window_t window = ours.create(400, 300);
    constexpr std::uint32_t MANAGED = 0;
    xcb_change_window_attributes(ours.display().get(), window, XCB_CW_OVERRIDE_REDIRECT, &MANAGED);
    ours.mapAndRaise(window);
    ASSERT_TRUE(world.mainLoop.runUntil([&] {
        const auto managed = world.session.windows().managed();
        return world.session.windows().isViewable(window) &&
               std::find(managed.begin(), managed.end(), window) != managed.end();
    }));
    click(frameOf(window));
    EXPECT_TRUE(left.empty());
}

TEST_F(MousePresses, OnesInTheFrameOfAnotherProgramsWindowAreHeard)
{
    const xcb_window_t window = terminal().windowSoon();
    ASSERT_NE(window, xcb_window_t{XCB_NONE});
    click(frameOf(window));
    EXPECT_EQ(1U, left.size());
}

TEST_F(MousePresses, OnesInAnotherProgramsWindowAreHeardWithTheModifiers)
{
    const desktop::Rectangle window = place();
    world.session.input().hold(desktop::KEY_SHIFT);
    click(window);
    world.session.input().release(desktop::KEY_SHIFT);
    EXPECT_EQ(std::vector{platform::MODIFIER_FLAG_SHIFT}, left);
}

TEST_F(MousePresses, OnesInAPanelAreHeardWhenItDoesNotReportTheItemActivated)
{
    makePanel(terminal().windowSoon());
    click(place());
    ASSERT_TRUE(world.mainLoop.runUntil([&] { return !left.empty(); }));
    EXPECT_EQ(1U, left.size());
}

TEST_F(MousePresses, OnesThatActivateTheItemInAPanelAreNotHeard)
{
    makePanel(terminal().windowSoon());
    click(place());
    world.eventMonitors.statusItemActivated();

    // One that is held back later than the first was, once a panel's word is not awaited any more.
    ASSERT_TRUE(world.mainLoop.runUntil([&] {
        click(place(), RIGHT);
        return !right.empty();
    }));
    EXPECT_TRUE(left.empty());
}

TEST_F(MousePresses, NothingIsForeignWhileTheLockHoldsTheInput)
{
    world.application.setPresentationOptions(X11World::LOCKED);
    ASSERT_TRUE(world.capturedSoon());
    click(place());
    world.application.setPresentationOptions(0);
    ASSERT_TRUE(world.mainLoop.runUntil([this] { return !world.guard.captured(); }));
    EXPECT_TRUE(left.empty());
}

TEST_F(MousePresses, TheLeftButtonOfALeftHandedPersonIsTheRightOne)
{
    swapButtons();
    click({0, 600, 1, 1}, RIGHT);
    EXPECT_EQ(1U, left.size());
    EXPECT_TRUE(right.empty());
}

} // namespace
