// What can be found out about other programs' windows. Every answer is empty for a window that is
// gone. Main thread.
#pragma once

#include "linux/workspace/WindowSystem.h"
#include "linux/x11/X11Desktop.h"

#include <string>
#include <vector>

namespace x11 {

class WindowInspector
{
public:
    explicit WindowInspector(const X11Desktop& desktop) : desktop(desktop) {}

    /// The process behind the window: as the server knows it, else as the window says.
    pid_t processOf(xcb_window_t window) const;

    workspace::WindowFacts factsOf(xcb_window_t window) const;

    /// Left to the window manager's care, and of a type that a user calls a window.
    bool isUserWindow(xcb_window_t window) const;

    /// The window that has the input focus; XCB_NONE when none has it.
    xcb_window_t focusedWindow() const;

    /// A property that is a list of windows or other identifiers.
    std::vector<std::uint32_t>
    identifiers(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const;

private:
    pid_t processByServer(xcb_window_t window) const;
    bool isOfThisMachine(xcb_window_t window) const;
    bool hasUserType(xcb_window_t window) const;
    std::string text(xcb_window_t window, xcb_atom_t name) const;

    const X11Desktop& desktop;
};

} // namespace x11
