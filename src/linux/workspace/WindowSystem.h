// What the workspace needs from a window system, whichever it is: who shows windows, who is in
// front, and a way to bring somebody there. Main thread only; listeners are called on it. An unset
// listener drops the event.
#pragma once

#include "platform/Port.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>

#include <sys/types.h>

namespace workspace {

/// A window that a user would call one of an application's windows: not a dock, desktop, splash,
/// menu, tooltip or notification.
struct WindowFacts
{
    pid_t processIdentifier = 0; // 0 where the window system cannot tell
    std::string windowClass;     // class part of WM_CLASS, or the Wayland app id
    std::string instanceName;    // instance part of WM_CLASS
    std::string applicationId;   // what the toolkit calls the application; mostly its entry's id
    std::uint64_t window = 0;    // names it while it is there
    bool remote = false;         // of a program on another machine
};

class WindowSystem : public platform::Port
{
public:
    /// A normal window appeared, or changed its class.
    std::function<void(const WindowFacts& window)> onWindowShown;

    /// A window that was reported is no longer shown.
    std::function<void(std::uint64_t window)> onWindowGone;

    /// A launcher says that it is about to start an application: the path or the name of its
    /// desktop entry.
    std::function<void(const std::string& entry)> onLaunchHint;

    /// Another window is in front, of this process; 0 and 0 when none is. This process counts while
    /// one of its lock windows has the focus, then without a window.
    std::function<void(pid_t processIdentifier, std::uint64_t window)> onActiveChanged;

    /// Starts to watch. Windows that are there already are reported first.
    virtual void start() = 0;

    /// Asks for the process's most recently used window to be raised and focused. False when it has
    /// no window.
    virtual bool bringForward(pid_t processIdentifier) = 0;

    /// The same with the most recently used one of these. False when none of them is shown.
    virtual bool bringForward(const std::set<std::uint64_t>& windows) = 0;

    /// The same for one window of any kind. The latest request counts.
    virtual void bringWindowForward(std::uint64_t window) = 0;
};

} // namespace workspace
