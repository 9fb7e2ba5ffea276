// Lets the agent be restarted a few times in any minute and no more, so that an agent that cannot
// live does not keep the machine busy. Pure; the caller brings the time.
#pragma once

#include <chrono>
#include <deque>

namespace helper {

class RestartLimit
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    static constexpr std::size_t MOST = 5;
    static constexpr std::chrono::seconds WINDOW{60};

    /// Whether one more restart is allowed now; it counts if it is.
    bool allow(TimePoint now);

private:
    std::deque<TimePoint> restarts;
};

} // namespace helper
