// Waits for all sources at once and wakes those that have something to do, in the order in which
// they were added. Owns none of them. Sleeps while nothing happens. One thread.
#pragma once

#include "helper/EventSource.h"

#include <vector>

namespace helper {

class EventLoop
{
public:
    void add(EventSource& source) { sources.push_back(&source); }

    /// Returns what `finish` was given, at once when that has happened already.
    int run();

    /// Lets `run` return before any other source is woken.
    void finish(int status);

private:
    std::vector<pollfd> wait() const;
    void wakeReady(const std::vector<pollfd>& outcome);
    int timeout() const;

    std::vector<EventSource*> sources;
    std::optional<int> result;
};

} // namespace helper
