// Something that the event loop waits for: a descriptor, a moment, or both. One thread.
#pragma once

#include "platform/Port.h"

#include <chrono>
#include <optional>

#include <poll.h>

namespace helper {

using Clock = std::chrono::steady_clock;

class EventSource : public platform::Port
{
public:
    /// What to wait for now; descriptor -1 for nothing. Asked before every wait.
    virtual pollfd awaited() const = 0;

    /// The moment at which `wake` is called at the latest.
    virtual std::optional<Clock::time_point> deadline() const { return std::nullopt; }

    /// What was waited for has come, or the moment has passed.
    virtual void wake() = 0;
};

} // namespace helper
