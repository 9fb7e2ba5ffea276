// Programs and windows that are brought to the front, and whether they stay there.
#include "ToolkitWindow.h"
#include "WindowSystemTest.h"

#include <set>

#include <unistd.h>

namespace {

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

/// What a window is told of the focus that it gets and loses. However soon one follows on the
/// other, none is missed.
class FocusNotes
{
public:
    FocusNotes(desktop::XConnection& connection, xcb_window_t window) : connection(connection)
    {
        constexpr std::uint32_t MASK = XCB_EVENT_MASK_FOCUS_CHANGE;
        xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &MASK);
        connection.sync();
    }

    bool hasHadTheFocus()
    {
        read();
        return had;
    }

    /// After it had it.
    bool hasLostTheFocus()
    {
        read();
        return lost;
    }

private:
    void read()
    {
        while (const auto event =
                   desktop::Reply<xcb_generic_event_t>(xcb_poll_for_event(connection.get()))) {
            constexpr unsigned SENT = 0x80;
            const unsigned type = event->response_type & ~SENT;
            had = had || type == XCB_FOCUS_IN;
            lost = lost || (had && type == XCB_FOCUS_OUT);
        }
    }

    desktop::XConnection& connection;
    bool had = false;
    bool lost = false;
};

} // namespace

TEST_F(Managed, BringsTheProcessForward)
{
    world.windowSystem.start();
    const auto first = startTerminal();
    const auto second = startTerminal();
    EXPECT_TRUE(world.windowSystem.bringForward(first.id()));
    EXPECT_TRUE(isActiveSoon(first.id()));
}

TEST_F(Managed, BringsTheMostRecentlyUsedWindowOfAProcessForward)
{
    world.windowSystem.start();
    ForeignWindows foreign(world.session.server().displayName());
    const xcb_window_t used = showInFront(foreign);
    const xcb_window_t newer = showInFront(foreign);
    xcb_destroy_window(foreign.display().get(), newer);
    foreign.display().sync();
    ASSERT_TRUE(soon([&] { return world.session.windows().active() == used; }));
    const xcb_window_t third = showInFront(foreign);
    const auto xterm = startTerminal();
    foreign.lower(third); // its place in the stack is not what counts
    EXPECT_TRUE(world.windowSystem.bringForward(getpid()));
    ASSERT_TRUE(isActiveSoon(getpid()));
    EXPECT_EQ(third, world.session.windows().active());
}

TEST_F(Managed, BringsAWindowForwardThatIsNotTheLatestOfItsProcess)
{
    world.windowSystem.start();
    ForeignWindows foreign(world.session.server().displayName());
    const xcb_window_t wanted = showInFront(foreign);
    showInFront(foreign);

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

TEST_F(Managed, WhatIsBroughtForwardAtTheEndOfALockStaysThereThoughAnotherIsPutInFront)
{
    world.windowSystem.start();
    const auto first = startTerminal();
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
    FocusNotes notes(foreign.display(), other);
    askForFront(foreign.display(), other);
    ASSERT_TRUE(soon([&] { return notes.hasHadTheFocus(); }));
    EXPECT_TRUE(soon([&] { return notes.hasLostTheFocus(); }));
    EXPECT_TRUE(soon([&] { return world.session.windows().activeProcess() == first.id(); }));
}

TEST_F(Managed, WithoutALockWhatIsPutInFrontLaterStaysThere)
{
    world.windowSystem.start();
    const auto first = startTerminal();
    const auto second = startTerminal();
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
    const auto xterm = startTerminal();
    world.application.activate(true);
    EXPECT_TRUE(isActiveSoon(getpid()));
}

TEST_F(Managed, OneWindowIsBroughtForwardInPlaceOfTheOneThatWasUsedLast)
{
    world.windowSystem.start();
    ForeignWindows own(world.session.server().displayName());
    const xcb_window_t wanted = showInFront(own);
    showInFront(own);
    const auto xterm = startTerminal();
    active.clear();
    world.application.activate(true);
    world.application.bringForward(wanted);
    ASSERT_TRUE(isActiveSoon(getpid()));
    EXPECT_EQ(world.session.windows().active(), wanted);
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
