// Timers that fire when told to, on the calling thread.
#pragma once

#include "platform/Timers.h"

#include <utility>
#include <vector>

namespace fakes {

class FakeTimers final : public platform::Timers
{
public:
    struct Timer
    {
        double seconds = 0.0;
        bool repeats = false;
        platform::Block block;
        bool fired = false;
    };

    void scheduleTimer(double seconds, bool repeats, platform::Block block) override
    {
        timers.push_back({seconds, repeats, std::move(block), false});
    }

    /// Fires every timer that is still due, once.
    void fireAll()
    {
        const std::size_t count = timers.size();
        for (std::size_t index = 0; index < count; ++index) {
            if (timers[index].repeats || !timers[index].fired) {
                timers[index].fired = true;
                const platform::Block block = timers[index].block;
                block();
            }
        }
    }

    std::vector<Timer> timers;
};

} // namespace fakes
