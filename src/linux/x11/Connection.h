// One connection to the X display, closed with the object. Any thread may send requests; only one
// may read events. After the display went away every request is dropped and every reply is empty:
// `broken` tells so, and nothing else happens.
#pragma once

#include "linux/x11/Extensions.h"
#include "linux/x11/Reply.h"

#include <memory>
#include <string>

#include <xcb/xcb.h>

namespace x11 {

class Connection
{
public:
    /// The display of that name, of the environment when it is empty; nothing when it cannot be
    /// reached.
    static std::unique_ptr<Connection> open(const std::string& display = {});

    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    Connection(Connection&&) = delete;
    Connection& operator=(Connection&&) = delete;

    xcb_connection_t* get() const { return connection; }

    const xcb_screen_t& screen() const { return *preferredScreen; }

    xcb_window_t root() const { return preferredScreen->root; }

    int screenNumber() const { return number; }

    const Extensions& extensions() const { return available; }

    bool broken() const { return xcb_connection_has_error(connection) != 0; }

    void flush() const { xcb_flush(connection); }

    /// Next event, without waiting; empty when there is none.
    Event nextEvent() const { return Event(xcb_poll_for_event(connection)); }

    /// Next event that was read already, beside some reply.
    Event nextQueuedEvent() const { return Event(xcb_poll_for_queued_event(connection)); }

    /// Which events this connection hears about the window, in place of those before.
    void selectEvents(xcb_window_t window, std::uint32_t mask) const;

private:
    Connection(xcb_connection_t* connection, xcb_screen_t* screen, int number);

    xcb_connection_t* connection;
    xcb_screen_t* preferredScreen;
    int number;
    Extensions available;
};

} // namespace x11
