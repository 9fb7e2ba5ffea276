// The windows of all programs that a user would call windows: the window manager's list of clients,
// or, without a window manager, what is shown on the root. Main thread.
#pragma once

#include "linux/workspace/WindowSystem.h"
#include "linux/x11/WindowInspector.h"
#include "linux/x11/X11Desktop.h"

#include <functional>
#include <map>
#include <vector>

namespace x11 {

class ClientWindows
{
public:
    /// A window appeared, or changed its class.
    std::function<void(const workspace::WindowFacts& facts)> onShown;

    /// One that was reported has gone.
    std::function<void(xcb_window_t window)> onGone;

    explicit ClientWindows(const X11Desktop& desktop) : desktop(desktop), inspector(desktop) {}

    /// Reports what is there; what comes later is reported by `handle`.
    void start();
    void handle(const xcb_generic_event_t& event);

    /// The user turned to the window.
    void noteUse(xcb_window_t window);

    /// The most recently used one of such windows, the topmost one where none was used, else
    /// XCB_NONE.
    xcb_window_t latest(const std::function<bool(const workspace::WindowFacts& facts)>& matches
    ) const;
    pid_t processOf(xcb_window_t window) const;

    /// Whether a window manager runs. Asks the server.
    bool managed() const;

private:
    void readAll();
    std::vector<xcb_window_t> currentWindows() const;
    std::vector<xcb_window_t> stackedWindows() const; // lowest first
    std::vector<xcb_window_t> rootList(xcb_atom_t property) const;
    std::vector<xcb_window_t> viewableChildren() const;
    void add(xcb_window_t window);
    void forget(xcb_window_t window);
    void handleProperty(const xcb_property_notify_event_t& event);
    void handleMap(const xcb_map_notify_event_t& event);
    void handleUnmap(const xcb_unmap_notify_event_t& event);
    void report(const workspace::WindowFacts& facts) const;
    void reportGone(xcb_window_t window) const;
    void update(xcb_window_t window);

    const X11Desktop& desktop;
    WindowInspector inspector;
    std::map<xcb_window_t, workspace::WindowFacts> windows;
    std::vector<xcb_window_t> used; // the latest one last
};

} // namespace x11
