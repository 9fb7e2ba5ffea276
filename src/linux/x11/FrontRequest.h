// A window that was asked to the front of a lock that ends. A window manager that sees the lock's
// focus go looks for somebody to give it to, and may do so after it heard the request; then the
// request is to be made again. That holds for a short time and a few times: later, and to a window
// manager that insists, it is the user's own choice. Used by one thread.
#pragma once

#include <chrono>

#include <xcb/xproto.h>

namespace x11 {

class FrontRequest
{
public:
    using Clock = std::chrono::steady_clock;

    static constexpr std::chrono::milliseconds SETTLING{500};
    static constexpr int MOST_REPEATS = 3;

    void made(xcb_window_t window, Clock::time_point now)
    {
        wanted = window;
        repeats = 0;
        end = now + SETTLING;
    }

    /// The lock has lost the focus; what was asked for shortly before is not settled yet.
    void lockLeft(Clock::time_point now)
    {
        if (pending(now)) {
            end = now + SETTLING;
        }
    }

    void withdraw() { wanted = XCB_NONE; }

    bool pending(Clock::time_point now) const { return wanted != XCB_NONE && now < end; }

    xcb_window_t window() const { return wanted; }

    /// Whether it is to be made again now that `active` is in front, which then counts as done.
    bool overruledBy(xcb_window_t active, Clock::time_point now)
    {
        if (active == wanted || !pending(now) || repeats == MOST_REPEATS) {
            return false;
        }
        ++repeats;
        return true;
    }

private:
    xcb_window_t wanted = XCB_NONE;
    int repeats = 0;
    Clock::time_point end;
};

} // namespace x11
