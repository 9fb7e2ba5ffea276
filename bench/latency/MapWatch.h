// Notices when an application shows its first window: one that the window manager is to manage.
#pragma once

#include "desktop/Wait.h"
#include "desktop/XConnection.h"

#include <optional>
#include <string>

namespace latency {

class MapWatch
{
public:
    explicit MapWatch(const std::string& displayName);

    /// Takes in what has happened; the time at which a first window was seen mapped, if one was.
    std::optional<desktop::Clock::time_point> look();

    /// Forgets what has happened so far.
    void reset();

private:
    void handle(const xcb_generic_event_t& event);

    desktop::XConnection connection;
    std::optional<desktop::Clock::time_point> mapped;
};

} // namespace latency
