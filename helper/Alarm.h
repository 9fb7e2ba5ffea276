// Calls one function at one moment. One thread.
#pragma once

#include "helper/EventSource.h"

#include <functional>

namespace helper {

class Alarm final : public EventSource
{
public:
    /// In place of whatever was to be called before.
    void set(Clock::time_point when, std::function<void()> then);

    pollfd awaited() const override { return {-1, 0, 0}; }

    std::optional<Clock::time_point> deadline() const override { return moment; }

    void wake() override;

private:
    std::optional<Clock::time_point> moment;
    std::function<void()> call;
};

} // namespace helper
