// Asks for a window in front and for the focus on it: the window manager, or the server where there
// is none. A window manager refuses what seems older than the last change of the focus, so that the
// request goes out with the server's own time, once that is heard. Main thread.
#pragma once

#include "linux/x11/ClientWindows.h"
#include "linux/x11/X11Desktop.h"

namespace x11 {

class WindowActivation
{
public:
    /// Both must outlive this.
    WindowActivation(const X11Desktop& desktop, const ClientWindows& clients);
    ~WindowActivation();
    WindowActivation(const WindowActivation&) = delete;
    WindowActivation& operator=(const WindowActivation&) = delete;
    WindowActivation(WindowActivation&&) = delete;
    WindowActivation& operator=(WindowActivation&&) = delete;

    /// Of requests that follow each other at once the last one counts.
    void request(xcb_window_t window);

    /// The request has not gone out yet.
    [[nodiscard]] bool underWay() const { return wanted != XCB_NONE; }

    /// True when the event was the one that `request` brings about.
    bool handle(const xcb_property_notify_event_t& event);

private:
    void ask(xcb_window_t window, xcb_timestamp_t time) const;
    void askWindowManager(xcb_window_t window, xcb_timestamp_t time) const;
    void askServer(xcb_window_t window, xcb_timestamp_t time) const;

    const X11Desktop& desktop;
    const ClientWindows& clients;
    xcb_window_t clock;             // a window that is never shown
    xcb_window_t wanted = XCB_NONE; // until the server's time is known
};

} // namespace x11
