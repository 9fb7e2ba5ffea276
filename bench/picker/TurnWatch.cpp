#include "picker/TurnWatch.h"

#include <algorithm>
#include <ctime>

namespace picker {

namespace {

std::chrono::nanoseconds processorTime()
{
    std::timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

TurnWatch::TurnWatch() : lastProcessorTime(processorTime())
{
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { turn(); });
    timer.start(0);
}

void TurnWatch::turn()
{
    const Clock::time_point now = Clock::now();
    const std::chrono::nanoseconds used = processorTime();
    longest.elapsed = std::max<decltype(longest.elapsed)>(longest.elapsed, now - lastTurn);
    longest.processor =
        std::max<decltype(longest.processor)>(longest.processor, used - lastProcessorTime);
    lastTurn = now;
    lastProcessorTime = used;
}

LongestTurn TurnWatch::take()
{
    turn();
    const LongestTurn taken = longest;
    longest = {};
    lastTurn = Clock::now();
    lastProcessorTime = processorTime();
    return taken;
}

} // namespace picker
