// The X11 adapters wired together on a private display, as the program wires them.
#pragma once

#include "desktop/Desktop.h"
#include "desktop/MainLoop.h"
#include "desktop/Pixels.h"
#include "linux/x11/X11Application.h"
#include "linux/x11/X11Desktop.h"
#include "linux/x11/X11EventMonitors.h"
#include "linux/x11/X11Guard.h"
#include "linux/x11/X11KeyboardStatus.h"
#include "linux/x11/X11Screens.h"
#include "linux/x11/X11WindowSystem.h"
#include "linux/x11/X11Windows.h"

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

/// What adapters report, from whichever thread.
class Reports
{
public:
    void add(std::string_view line)
    {
        const std::lock_guard lock(mutex);
        lines.emplace_back(line);
    }

    std::vector<std::string> all() const
    {
        const std::lock_guard lock(mutex);
        return lines;
    }

    std::size_t count() const { return all().size(); }

private:
    mutable std::mutex mutex;
    std::vector<std::string> lines;
};

class X11World
{
public:
    /// What the lock asks for while it is up.
    static constexpr unsigned LOCKED = 0x16D;

    explicit X11World(bool windowManager = false)
        : session({.windowManager = windowManager, .bus = false, .keyring = false})
    {
    }

    /// One picture of all screens shows nothing but the lock's colour.
    bool allCovered()
    {
        for (const desktop::Rectangle& screen : session.server().screens()) {
            if (!desktop::capture(session.connection(), screen).isAllOf(desktop::LOCK_COLOUR)) {
                return false;
            }
        }
        return true;
    }

    bool capturedSoon()
    {
        return mainLoop.runUntil([this] { return guard.captured(); });
    }

    platform::WindowAttributes lockAttributes(const platform::Rect& frame) const
    {
        platform::WindowAttributes attributes;
        attributes.backgroundColor = platform::LOCK_COLOR;
        attributes.level = platform::WindowLevelKey::ScreenSaver;
        attributes.frame = frame;
        return attributes;
    }

    desktop::Desktop session;
    desktop::MainLoop mainLoop;
    Reports reports;
    x11::X11Desktop display{
        x11::Connection::open(session.server().displayName()), mainLoop, [this](const auto& line) {
            reports.add(line);
        }};
    x11::X11Guard guard{
        x11::Connection::open(session.server().displayName()), mainLoop, [this](const auto& line) {
            reports.add(line);
        }};
    x11::X11WindowSystem windowSystem{display, guard, mainLoop};
    x11::X11Application application{guard, mainLoop, windowSystem};
    x11::X11Screens screens{display};
    x11::X11Windows windows{guard, display, nullptr};
    x11::X11EventMonitors eventMonitors{display, guard, mainLoop};
    x11::X11KeyboardStatus keyboardStatus{display};
};
