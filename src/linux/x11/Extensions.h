// Which extensions the display has that the adapters use, and where their events begin. Read once,
// then for any thread.
#pragma once

#include <cstdint>

#include <xcb/xcb.h>

namespace x11 {

struct Extensions
{
    bool randr = false;  // 1.5: monitors
    bool xinput = false; // 2.0: grabs of every device
    bool xtest = false;
    bool res = false; // 1.2: process identifiers of clients
    bool xkb = false;

    std::uint8_t randrFirstEvent = 0;
    std::uint8_t xinputOpcode = 0;
    std::uint8_t xkbEvent = 0;

    /// Of a screen, or of a part of one.
    bool isRandrEvent(std::uint8_t type) const
    {
        return randr && (type == randrFirstEvent || type == randrFirstEvent + 1);
    }
};

/// Asks the server, and tells it which versions this program speaks.
Extensions queryExtensions(xcb_connection_t* connection);

} // namespace x11
