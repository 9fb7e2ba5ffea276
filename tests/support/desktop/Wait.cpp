#include "desktop/Wait.h"

#include <thread>

namespace desktop {

bool waitUntil(
    const std::function<bool()>& condition,
    std::chrono::milliseconds timeout,
    std::chrono::microseconds interval
)
{
    const auto end = Clock::now() + timeout;
    while (!condition()) {
        if (Clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(interval);
    }
    return true;
}

bool holdsFor(const std::function<bool()>& condition, std::chrono::milliseconds duration)
{
    return !waitUntil([&condition] { return !condition(); }, duration);
}

} // namespace desktop
