// Holds a connection to the display of the session, for one purpose: it breaks when the session
// goes away, so that nothing is started in a session that is ending. One thread.
#pragma once

#include "helper/EventSource.h"
#include "linux/descriptors/FileDescriptor.h"

#include <functional>
#include <memory>

struct xcb_connection_t;

namespace helper {

class DisplayWatch final : public EventSource
{
public:
    /// Connects to the display of the environment, the Wayland one first. Without any, or where it
    /// cannot be reached now, its end is not noticed.
    void connect();

    std::function<void()> onLost;

    pollfd awaited() const override;
    void wake() override;

private:
    struct Disconnect
    {
        void operator()(xcb_connection_t* connection) const;
    };

    bool isLost() const;

    descriptors::FileDescriptor wayland;
    std::unique_ptr<xcb_connection_t, Disconnect> x11;
};

} // namespace helper
