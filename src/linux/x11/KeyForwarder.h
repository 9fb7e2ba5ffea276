// Hands captured keys and clicks to the lock's own window, and to nothing else, as the core events
// that a toolkit expects. Keys that come before there is such a window wait for it, up to a limit.
// What was pressed before the capture began is not handed on, neither its repeats nor its release.
// Used by one thread.
#pragma once

#include "linux/x11/Connection.h"

#include <bitset>
#include <cstddef>
#include <vector>

#include <xcb/xinput.h>

namespace x11 {

class KeyForwarder
{
public:
    static constexpr std::size_t LARGEST_QUEUE = 1024; // events

    explicit KeyForwarder(const Connection& connection);
    ~KeyForwarder();
    KeyForwarder(const KeyForwarder&) = delete;
    KeyForwarder& operator=(const KeyForwarder&) = delete;
    KeyForwarder(KeyForwarder&&) = delete;
    KeyForwarder& operator=(KeyForwarder&&) = delete;

    /// The window that takes what waits and what comes; XCB_NONE lets it wait.
    void setTarget(xcb_window_t window);

    void key(const xcb_input_key_press_event_t& event);
    void button(const xcb_input_button_press_event_t& event) const;

    /// Forgets what waits and which keys are down.
    void reset();

private:
    void forward(xcb_key_press_event_t event);
    void send(const xcb_key_press_event_t& event) const;
    void forgetQueue();

    const Connection& connection;
    xcb_window_t target = XCB_NONE;
    std::vector<xcb_key_press_event_t> waiting;
    std::bitset<256> pressed;
};

} // namespace x11
