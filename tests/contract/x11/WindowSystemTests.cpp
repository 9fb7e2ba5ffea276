// Which windows the workspace hears of, and who is in front, with real programs.
#include "ForeignWindows.h"
#include "ToolkitWindow.h"
#include "X11World.h"

#include <algorithm>
#include <memory>
#include <optional>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

class WindowSystemTest : public testing::Test
{
protected:
    explicit WindowSystemTest(bool windowManager) : world(windowManager)
    {
        world.windowSystem.onWindowShown = [this](const workspace::WindowFacts& facts) {
            shown.push_back(facts);
        };
        world.windowSystem.onActiveChanged = [this](pid_t process, std::uint64_t window) {
            if (active.empty() || active.back() != process) {
                active.push_back(process);
            }
            activeWindow = window;
        };
    }

    bool soon(const std::function<bool()>& condition) { return world.mainLoop.runUntil(condition); }

    bool isShownSoon(pid_t process)
    {
        return soon([&] {
            return std::any_of(shown.begin(), shown.end(), [&](const auto& facts) {
                return facts.processIdentifier == process;
            });
        });
    }

    bool isActiveSoon(pid_t process)
    {
        return soon([&] { return !active.empty() && active.back() == process; });
    }

    X11World world;
    std::vector<workspace::WindowFacts> shown;
    std::vector<pid_t> active;
    std::uint64_t activeWindow = 0;
};

class Managed : public WindowSystemTest
{
protected:
    Managed() : WindowSystemTest(true) {}
};

class Unmanaged : public WindowSystemTest
{
protected:
    Unmanaged() : WindowSystemTest(false) {}
};

TEST_F(Managed, ReportsAWindowWithItsProcessAndItsClass)
{
    world.windowSystem.start();
    const auto xterm = world.session.start({"xterm", "-name", "special"});
    ASSERT_TRUE(isShownSoon(xterm.id()));
    ASSERT_EQ(1U, shown.size());
    EXPECT_EQ("XTerm", shown[0].windowClass);
    EXPECT_EQ("special", shown[0].instanceName);
}

TEST_F(Managed, ReportsWindowsThatWereThereBefore)
{
    const auto xterm = world.session.start({"xterm"});
    ASSERT_TRUE(soon([this] { return world.session.windows().activeProcess() != 0; }));
    world.windowSystem.start();
    EXPECT_TRUE(isShownSoon(xterm.id()));
    EXPECT_TRUE(isActiveSoon(xterm.id()));
}

TEST_F(Managed, ReportsAChangedClassAgain)
{
    world.windowSystem.start();
    const auto xterm = world.session.start({"xterm"});
    ASSERT_TRUE(isShownSoon(xterm.id()));
    const xcb_window_t window = world.session.windows().ofClass("XTerm");
    constexpr std::string_view NAMES{"calc\0Office\0", 12};
    auto& connection = world.session.connection();
    xcb_change_property(
        connection.get(),
        XCB_PROP_MODE_REPLACE,
        window,
        XCB_ATOM_WM_CLASS,
        XCB_ATOM_STRING,
        8,
        NAMES.size(),
        NAMES.data()
    );
    connection.sync();
    ASSERT_TRUE(soon([this] { return shown.size() == 2; }));
    EXPECT_EQ("Office", shown[1].windowClass);
    EXPECT_EQ("calc", shown[1].instanceName);
    EXPECT_EQ(xterm.id(), shown[1].processIdentifier);
}

/// A managed window of the test's own connection, of that type.
xcb_window_t showTyped(ForeignWindows& foreign, const std::string& type)
{
    desktop::XConnection& connection = foreign.display();
    const xcb_window_t window = xcb_generate_id(connection.get());
    xcb_create_window(
        connection.get(),
        XCB_COPY_FROM_PARENT,
        window,
        connection.root(),
        0,
        0,
        100,
        100,
        0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT,
        0,
        nullptr
    );
    const xcb_atom_t atoms[] = {
        connection.atom("_KDE_NET_WM_WINDOW_TYPE_OVERRIDE"), connection.atom(type)};
    xcb_change_property(
        connection.get(),
        XCB_PROP_MODE_REPLACE,
        window,
        connection.atom("_NET_WM_WINDOW_TYPE"),
        XCB_ATOM_ATOM,
        32,
        2,
        atoms
    );
    xcb_map_window(connection.get(), window);
    connection.sync();
    return window;
}

TEST_F(Managed, DocksSplashesMenusAndOverridingWindowsAreNoWindowsOfAnApplication)
{
    world.windowSystem.start();
    ForeignWindows foreign(world.session.server().displayName());
    for (const auto* type : {"DOCK", "SPLASH", "DESKTOP", "NOTIFICATION", "MENU", "TOOLTIP"}) {
        showTyped(foreign, std::string("_NET_WM_WINDOW_TYPE_") + type);
    }
    foreign.mapAndRaise(foreign.create(10, 10));
    EXPECT_TRUE(shown.empty());
    showTyped(foreign, "_NET_WM_WINDOW_TYPE_DIALOG"); // the last, and the only one
    ASSERT_TRUE(isShownSoon(getpid()));
    EXPECT_EQ(1U, shown.size());
}

TEST_F(Managed, FollowsTheActiveProcess)
{
    world.windowSystem.start();
    const auto first = world.session.start({"xterm"});
    ASSERT_TRUE(isActiveSoon(first.id()));
    auto second = std::make_unique<desktop::ChildProcess>(world.session.start({"xterm"}));
    ASSERT_TRUE(isActiveSoon(second->id()));
    second.reset();
    ASSERT_TRUE(isActiveSoon(first.id()));
    // Between two windows none is active for a moment, which is no change of its own.
    EXPECT_EQ(0, std::count(active.begin(), active.end(), 0));
}

TEST_F(Managed, TellsWhenNoneIsActiveAnyMore)
{
    world.windowSystem.start();
    auto only = std::make_unique<desktop::ChildProcess>(world.session.start({"xterm"}));
    ASSERT_TRUE(isActiveSoon(only->id()));
    only.reset();
    EXPECT_TRUE(isActiveSoon(0));
}

TEST_F(Managed, BringsTheProcessForward)
{
    world.windowSystem.start();
    const auto first = world.session.start({"xterm"});
    ASSERT_TRUE(isActiveSoon(first.id()));
    const auto second = world.session.start({"xterm"});
    ASSERT_TRUE(isActiveSoon(second.id()));
    EXPECT_TRUE(world.windowSystem.bringForward(first.id()));
    EXPECT_TRUE(isActiveSoon(first.id()));
}

TEST_F(Managed, BringsTheMostRecentlyUsedWindowOfAProcessForward)
{
    world.windowSystem.start();
    ForeignWindows foreign(world.session.server().displayName());
    const xcb_window_t used = showTyped(foreign, "_NET_WM_WINDOW_TYPE_NORMAL");
    ASSERT_TRUE(soon([&] { return world.session.windows().active() == used; }));
    const xcb_window_t newer = showTyped(foreign, "_NET_WM_WINDOW_TYPE_NORMAL");
    ASSERT_TRUE(soon([&] { return world.session.windows().active() == newer; }));
    xcb_destroy_window(foreign.display().get(), newer);
    foreign.display().sync();
    ASSERT_TRUE(soon([&] { return world.session.windows().active() == used; }));
    const xcb_window_t third = showTyped(foreign, "_NET_WM_WINDOW_TYPE_NORMAL");
    ASSERT_TRUE(soon([&] { return world.session.windows().active() == third; }));
    const auto xterm = world.session.start({"xterm"});
    ASSERT_TRUE(isActiveSoon(xterm.id()));
    foreign.lower(third); // its place in the stack is not what counts
    EXPECT_TRUE(world.windowSystem.bringForward(getpid()));
    ASSERT_TRUE(isActiveSoon(getpid()));
    EXPECT_EQ(third, world.session.windows().active());
}

TEST_F(Managed, BringsAWindowForwardThatIsNotTheLatestOfItsProcess)
{
    world.windowSystem.start();
    ForeignWindows foreign(world.session.server().displayName());
    const xcb_window_t wanted = showTyped(foreign, "_NET_WM_WINDOW_TYPE_NORMAL");
    ASSERT_TRUE(soon([&] { return activeWindow == wanted; }));
    const xcb_window_t latest = showTyped(foreign, "_NET_WM_WINDOW_TYPE_NORMAL");
    ASSERT_TRUE(soon([&] { return activeWindow == latest; }));

    EXPECT_TRUE(world.windowSystem.bringForward(std::set<std::uint64_t>{wanted}));
    EXPECT_TRUE(soon([&] { return activeWindow == wanted; }));
    EXPECT_FALSE(world.windowSystem.bringForward(std::set<std::uint64_t>{1}));
}

TEST_F(Managed, AProcessWithoutWindowsCannotBeBroughtForward)
{
    world.windowSystem.start();
    EXPECT_FALSE(world.windowSystem.bringForward(1));
    EXPECT_FALSE(world.windowSystem.bringForward(getpid()));
}

TEST_F(Managed, ThisProcessIsActiveWhileItsLockWindowHasTheFocus)
{
    world.windowSystem.start();
    const auto xterm = world.session.start({"xterm"});
    ASSERT_TRUE(isActiveSoon(xterm.id()));
    ToolkitWindow window(world.session.server().displayName(), {0, 0, 1280, 720});
    const auto adopted =
        world.windows.adoptWindow(window.id(), world.lockAttributes({0, 0, 1280, 720}));
    window.show();
    adopted->makeKeyAndOrderFront();
    ASSERT_TRUE(isActiveSoon(getpid()));

    // Another program is brought to the front beneath it: the lock lost the focus.
    EXPECT_TRUE(world.windowSystem.bringForward(xterm.id()));
    ASSERT_TRUE(isActiveSoon(xterm.id()));
    world.application.activate(true);
    ASSERT_TRUE(isActiveSoon(getpid()));
    EXPECT_EQ(window.id(), world.session.windows().focused());
}

/// Asks the window manager as a panel does, in the name of the user.
void askForFront(desktop::XConnection& connection, xcb_window_t window)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = connection.atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = 2;
    xcb_send_event(
        connection.get(),
        0,
        connection.root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        static_cast<const char*>(static_cast<const void*>(&message))
    );
    connection.sync();
}

TEST_F(Managed, WhatIsBroughtForwardAtTheEndOfALockStaysThereThoughAnotherIsPutInFront)
{
    world.windowSystem.start();
    const auto first = world.session.start({"xterm"});
    ASSERT_TRUE(isActiveSoon(first.id()));
    ForeignWindows foreign(world.session.server().displayName());
    const xcb_window_t other = showTyped(foreign, "_NET_WM_WINDOW_TYPE_NORMAL");
    ASSERT_TRUE(isActiveSoon(getpid()));
    ToolkitWindow window(world.session.server().displayName(), {0, 0, 1280, 720});
    const auto adopted =
        world.windows.adoptWindow(window.id(), world.lockAttributes({0, 0, 1280, 720}));
    window.show();
    adopted->makeKeyAndOrderFront();
    ASSERT_TRUE(soon([&] { return world.session.windows().focused() == window.id(); }));

    EXPECT_TRUE(world.windowSystem.bringForward(first.id()));
    adopted->close();
    window.hide();
    ASSERT_TRUE(isActiveSoon(first.id()));
    active.clear();
    askForFront(foreign.display(), other);
    ASSERT_TRUE(soon([&] { return std::count(active.begin(), active.end(), getpid()) == 1; }));
    EXPECT_TRUE(isActiveSoon(first.id()));
}

TEST_F(Managed, WithoutALockWhatIsPutInFrontLaterStaysThere)
{
    world.windowSystem.start();
    const auto first = world.session.start({"xterm"});
    ASSERT_TRUE(isActiveSoon(first.id()));
    const auto second = world.session.start({"xterm"});
    ASSERT_TRUE(isActiveSoon(second.id()));
    EXPECT_TRUE(world.windowSystem.bringForward(first.id()));
    ASSERT_TRUE(isActiveSoon(first.id()));
    ForeignWindows foreign(world.session.server().displayName());
    const xcb_window_t other = showTyped(foreign, "_NET_WM_WINDOW_TYPE_NORMAL");
    ASSERT_TRUE(isActiveSoon(getpid()));
    EXPECT_FALSE(world.mainLoop.runUntil(
        [&] { return world.session.windows().active() != other; }, x11::FrontRequest::SETTLING
    ));
}

TEST_F(Managed, WithoutALockActivatingBringsThisProgramsOwnWindowForward)
{
    world.windowSystem.start();
    ForeignWindows own(world.session.server().displayName());
    showTyped(own, "_NET_WM_WINDOW_TYPE_NORMAL");
    ASSERT_TRUE(isShownSoon(getpid()));
    const auto xterm = world.session.start({"xterm"});
    ASSERT_TRUE(isActiveSoon(xterm.id()));
    world.application.activate(true);
    EXPECT_TRUE(isActiveSoon(getpid()));
}

TEST_F(Managed, OneWindowIsBroughtForwardInPlaceOfTheOneThatWasUsedLast)
{
    world.windowSystem.start();
    ForeignWindows own(world.session.server().displayName());
    const xcb_window_t wanted = showTyped(own, "_NET_WM_WINDOW_TYPE_NORMAL");
    ASSERT_TRUE(soon([&] { return world.session.windows().active() == wanted; }));
    const xcb_window_t usedLast = showTyped(own, "_NET_WM_WINDOW_TYPE_NORMAL");
    ASSERT_TRUE(soon([&] { return world.session.windows().active() == usedLast; }));
    const auto xterm = world.session.start({"xterm"});
    ASSERT_TRUE(isActiveSoon(xterm.id()));
    active.clear();
    world.application.activate(true);
    world.application.bringForward(wanted);
    ASSERT_TRUE(isActiveSoon(getpid()));
    EXPECT_EQ(world.session.windows().active(), wanted);
}

TEST_F(Unmanaged, ReportsWindowsAsTheyAreMapped)
{
    world.windowSystem.start();
    const auto xterm = world.session.start({"xterm"});
    EXPECT_TRUE(isShownSoon(xterm.id()));
}

TEST_F(Unmanaged, BringingForwardRaisesAndFocuses)
{
    world.windowSystem.start();
    const auto first = world.session.start({"xterm"});
    ASSERT_TRUE(isShownSoon(first.id()));
    const auto second = world.session.start({"xterm"});
    ASSERT_TRUE(isShownSoon(second.id()));
    for (const pid_t process : {first.id(), second.id(), first.id()}) {
        ASSERT_TRUE(world.windowSystem.bringForward(process));
        EXPECT_TRUE(isActiveSoon(process));
    }
}

} // namespace
