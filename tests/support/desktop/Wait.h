// Waits for what is to come about, never for time alone. Any thread.
#pragma once

#include <chrono>
#include <functional>

namespace desktop {

using Clock = std::chrono::steady_clock;

/// True as soon as the condition holds, false when it does not within the timeout.
bool waitUntil(
    const std::function<bool()>& condition,
    std::chrono::milliseconds timeout,
    std::chrono::microseconds interval = std::chrono::milliseconds(5)
);

/// Runs the condition again and again; true when it held each time for the whole duration.
bool holdsFor(const std::function<bool()>& condition, std::chrono::milliseconds duration);

} // namespace desktop
