// What the guard does with its windows and with the display's events: keeps the backdrop, the
// covers and the lock's own window above everything that appears, in the size of the desktop, and
// the input captured while covered. Lives on the guard's thread.
#pragma once

#include "linux/x11/Backdrop.h"
#include "linux/x11/InputCapture.h"
#include "linux/x11/KeyForwarder.h"
#include "linux/x11/KeyWindows.h"
#include "linux/x11/RaiseLimiter.h"
#include "linux/x11/WindowStack.h"
#include "platform/Report.h"

#include <chrono>
#include <optional>

namespace x11 {

class GuardLoop
{
public:
    using Clock = std::chrono::steady_clock;

    GuardLoop(const Connection& connection, platform::Report report);

    void cover();
    void uncover();

    /// Shows the window and keeps it on top, above all of lower levels.
    void show(xcb_window_t window, int level);
    void hide(xcb_window_t window);
    /// Only for windows that were made over the guard's own connection.
    void destroy(xcb_window_t window);
    /// Does not care about the window any more.
    void release(xcb_window_t window);

    /// Keeps the window on top, as `show` does, and lets it take the keyboard. Showing it is its
    /// owner's.
    void makeKey(xcb_window_t window, int level);
    /// Gives the input focus to the key window.
    void focusKeyWindow();

    void handle(const xcb_generic_event_t& event);

    /// Does what became due with the events and the time. Returns when it is to be called next, or
    /// nothing when only an event or a command can bring work.
    std::optional<Clock::time_point> work();

    bool captured() const { return capture.complete(); }

    bool focused() const { return keyWindows.focused(); }

    unsigned long raises() const { return raiseCount; }

private:
    void place(xcb_window_t window, int level);
    void handleStacking(xcb_window_t window);
    void handleConfigure(const xcb_configure_notify_event_t& event);
    void handleFocus(const xcb_focus_in_event_t& event);
    void handleInput(const xcb_ge_generic_event_t& event);
    void handleScreenChange(const xcb_generic_event_t& event);
    void raiseNow();
    std::optional<Clock::time_point> stackDue() const;
    void keepOnTop(Clock::time_point now);
    void keepCaptured(Clock::time_point now);

    const Connection& connection;
    Backdrop backdrop;
    WindowStack stack;
    KeyWindows keyWindows;
    InputCapture capture;
    KeyForwarder forwarder;
    RaiseLimiter limiter;
    bool raiseWanted = false;
    bool checkWanted = false;
    bool wasCaptured = false;
    unsigned long raiseCount = 0;
};

} // namespace x11
