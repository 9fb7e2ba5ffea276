// Ends the wait of a thread that waits for a display's events, from any other thread.
#pragma once

#include "linux/descriptors/FileDescriptor.h"
#include "linux/x11/Connection.h"

#include <chrono>
#include <optional>

namespace x11 {

class WakeUp
{
public:
    using Clock = std::chrono::steady_clock;

    WakeUp();

    void signal() const;

    /// Returns when the display has something to read, when it was signalled since the last call,
    /// or at the given time.
    void waitWith(const Connection& connection, std::optional<Clock::time_point> until) const;
    /// Returns when it was signalled since the last call.
    void waitAlone() const;

private:
    void clear() const;

    descriptors::FileDescriptor counter;
};

} // namespace x11
