#include "helper/Alarm.h"

#include <utility>

namespace helper {

void Alarm::set(Clock::time_point when, std::function<void()> then)
{
    moment = when;
    call = std::move(then);
}

void Alarm::wake()
{
    moment.reset();
    if (const std::function<void()> due = std::exchange(call, nullptr)) {
        due();
    }
}

} // namespace helper
