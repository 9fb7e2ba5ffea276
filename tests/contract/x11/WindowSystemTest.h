// What the workspace is told of the windows of real programs, with a window manager and without.
#pragma once

#include "ForeignWindows.h"
#include "X11World.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

/// A managed window of the test's own connection, of that type.
inline xcb_window_t showTyped(ForeignWindows& foreign, const std::string& type)
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
    const std::array<xcb_atom_t, 2> atoms{
        connection.atom("_KDE_NET_WM_WINDOW_TYPE_OVERRIDE"), connection.atom(type)};
    xcb_change_property(
        connection.get(),
        XCB_PROP_MODE_REPLACE,
        window,
        connection.atom("_NET_WM_WINDOW_TYPE"),
        XCB_ATOM_ATOM,
        32,
        atoms.size(),
        atoms.data()
    );
    xcb_map_window(connection.get(), window);
    connection.sync();
    return window;
}

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

    /// A terminal, once it is in front.
    desktop::ChildProcess startTerminal()
    {
        auto terminal = world.session.start({"xterm"});
        EXPECT_TRUE(isActiveSoon(terminal.id()));
        return terminal;
    }

    /// An ordinary window of the test's own, once it is in front.
    xcb_window_t showInFront(ForeignWindows& foreign)
    {
        const xcb_window_t window = showTyped(foreign, "_NET_WM_WINDOW_TYPE_NORMAL");
        EXPECT_TRUE(soon([&] {
            return activeWindow == window && world.session.windows().active() == window;
        }));
        return window;
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
