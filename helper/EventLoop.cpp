#include "helper/EventLoop.h"

#include <algorithm>

namespace helper {

namespace {

constexpr std::chrono::milliseconds LONGEST_WAIT = std::chrono::hours(24);

} // namespace

int EventLoop::run()
{
    while (!result.has_value()) {
        wakeReady(wait());
    }
    return *result;
}

void EventLoop::wakeReady(const std::vector<pollfd>& outcome)
{
    const Clock::time_point now = Clock::now();
    for (std::size_t i = 0; i < sources.size() && !result.has_value(); ++i) {
        EventSource& source = *sources[i];
        // What an earlier one has switched to another descriptor waits for the next turn.
        const bool isReady = outcome[i].revents != 0 && outcome[i].fd == source.awaited().fd;
        if (isReady || source.deadline().value_or(Clock::time_point::max()) <= now) {
            source.wake();
        }
    }
}

void EventLoop::finish(int status)
{
    if (!result.has_value()) {
        result = status;
    }
}

std::vector<pollfd> EventLoop::wait() const
{
    std::vector<pollfd> wanted;
    wanted.reserve(sources.size());
    for (const EventSource* source : sources) {
        wanted.push_back(source->awaited());
    }
    if (::poll(wanted.data(), wanted.size(), timeout()) < 0) {
        for (pollfd& one : wanted) {
            one.revents = 0;
        }
    }
    return wanted;
}

int EventLoop::timeout() const
{
    std::optional<Clock::time_point> first;
    for (const EventSource* source : sources) {
        const std::optional<Clock::time_point> limit = source->deadline();
        if (limit.has_value() && (!first.has_value() || *limit < *first)) {
            first = limit;
        }
    }
    if (!first.has_value()) {
        return -1;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*first - Clock::now());
    const auto bounded = std::clamp(left, std::chrono::milliseconds(0), LONGEST_WAIT);
    return static_cast<int>(bounded.count());
}

} // namespace helper
