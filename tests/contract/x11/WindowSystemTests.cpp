// Which windows the workspace hears of, and who is in front, with real programs.
#include "ToolkitWindow.h"
#include "WindowSystemTest.h"

#include <memory>

#include <unistd.h>

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
    const auto first = startTerminal();
    auto second = std::make_unique<desktop::ChildProcess>(startTerminal());
    second.reset();
    ASSERT_TRUE(isActiveSoon(first.id()));
    // Between two windows none is active for a moment, which is no change of its own.
    EXPECT_EQ(0, std::count(active.begin(), active.end(), 0));
}

TEST_F(Managed, TellsWhenNoneIsActiveAnyMore)
{
    world.windowSystem.start();
    auto only = std::make_unique<desktop::ChildProcess>(startTerminal());
    only.reset();
    EXPECT_TRUE(isActiveSoon(0));
}

TEST_F(Managed, ThisProcessIsActiveWhileItsLockWindowHasTheFocus)
{
    world.windowSystem.start();
    const auto xterm = startTerminal();
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

TEST_F(Unmanaged, ReportsWindowsAsTheyAreMapped)
{
    world.windowSystem.start();
    const auto xterm = world.session.start({"xterm"});
    EXPECT_TRUE(isShownSoon(xterm.id()));
}

TEST_F(Unmanaged, AWindowThatIsGoneIsReportedThoughItsWindowManagerGoesOnListingIt)
{
    ForeignWindows manager(world.session.server().displayName());
    desktop::XConnection& display = manager.display();
    const auto say = [&](xcb_window_t of, const char* what, xcb_window_t is) {
        xcb_change_property(
            display.get(),
            XCB_PROP_MODE_REPLACE,
            of,
            display.atom(what),
            XCB_ATOM_WINDOW,
            32,
            1,
            &is
        );
    };
    const xcb_window_t check = manager.create(0, 0);
    say(check, "_NET_SUPPORTING_WM_CHECK", check);
    say(display.root(), "_NET_SUPPORTING_WM_CHECK", check);
    const xcb_window_t frame = manager.create(50, 50);
    const xcb_window_t framed = showTyped(manager, "_NET_WM_WINDOW_TYPE_NORMAL");
    xcb_reparent_window(display.get(), framed, frame, 0, 0);
    say(display.root(), "_NET_CLIENT_LIST", framed);
    display.sync();
    std::vector<std::uint64_t> gone;
    world.windowSystem.onWindowGone = [&](std::uint64_t window) { gone.push_back(window); };
    world.windowSystem.start();
    ASSERT_EQ(shown.size(), 1U);

    xcb_destroy_window(display.get(), framed);
    display.sync();
    EXPECT_TRUE(soon([&] { return gone == std::vector<std::uint64_t>{framed}; }));
}
