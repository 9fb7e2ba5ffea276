// Lets the windows be raised at once, many times in a row, yet not endlessly: two programs that
// both want to be on top must not keep the machine busy. A raise that has to wait is due at a known
// time, so that the last one always happens. Used by one thread.
#pragma once

#include <algorithm>
#include <chrono>

namespace x11 {

class RaiseLimiter
{
public:
    using Clock = std::chrono::steady_clock;

    static constexpr int BURST = 100;
    static constexpr std::chrono::milliseconds INTERVAL{4}; // between raises in the long run

    /// True when it may happen now; it then counts.
    bool take(Clock::time_point now)
    {
        if (now < due()) {
            return false;
        }
        spent = std::max(spent, now) + INTERVAL;
        return true;
    }

    /// When one may happen again.
    Clock::time_point due() const { return spent - (BURST - 1) * INTERVAL; }

private:
    Clock::time_point spent; // until then the raises so far would have lasted, one an interval
};

} // namespace x11
