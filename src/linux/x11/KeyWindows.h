// The lock's windows that may take the keyboard; of those that are open, the latest one made key is
// the one. Gives it the input focus as well, so that it shows its caret, but not so often that a
// program which fights for the focus could keep the machine busy. Used by one thread.
#pragma once

#include "linux/x11/Connection.h"

#include <chrono>
#include <optional>
#include <vector>

namespace x11 {

class KeyWindows
{
public:
    using Clock = std::chrono::steady_clock;

    static constexpr std::chrono::milliseconds BETWEEN_FOCUSES{10};

    explicit KeyWindows(const Connection& connection) : connection(connection) {}

    /// Makes the window the key one, and wants the focus for it.
    void add(xcb_window_t window);
    void remove(xcb_window_t window);

    void windowMapped(xcb_window_t window);
    void windowUnmapped(xcb_window_t window);
    void focusChanged(const xcb_focus_in_event_t& event);

    /// The key window if it is shown, else XCB_NONE.
    xcb_window_t shown() const;

    bool contains(xcb_window_t window) const;

    /// One of them has the input focus.
    bool focused() const { return focus != XCB_NONE; }

    /// Wants the focus for the key window, as soon as it is shown.
    void wantFocus() { focusWanted = true; }

    /// Gives the focus to `other`, a window of the lock that is shown, and back to the key window:
    /// to a toolkit the beginning of a grab looks like the loss of the focus. (Were it nobody's in
    /// between, a window manager would look for somebody.)
    void renewFocus(xcb_window_t other);

    /// When `giveFocus` is due; nothing when it is not.
    std::optional<Clock::time_point> due() const;
    void giveFocus();

private:
    struct KeyWindow
    {
        xcb_window_t window;
        bool mapped;
    };

    void setMapped(xcb_window_t window, bool mapped);
    void setInputFocus(xcb_window_t window) const;

    const Connection& connection;
    std::vector<KeyWindow> windows; // the key window last
    xcb_window_t focus = XCB_NONE;
    bool focusWanted = false;
    Clock::time_point nextFocus;
};

} // namespace x11
