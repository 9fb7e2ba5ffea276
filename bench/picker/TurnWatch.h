// Finds the longest turn of the main thread's event loop: the longest time in which a timer that
// always fires was not served. Main thread only.
#pragma once

#include <QTimer>

#include <chrono>

namespace picker {

struct LongestTurn
{
    std::chrono::duration<double, std::milli> elapsed{0};
    std::chrono::duration<double, std::milli> processor{0}; // what the thread itself used of a turn
};

class TurnWatch
{
public:
    TurnWatch();

    /// The longest turn since the last time it was taken.
    LongestTurn take();

private:
    using Clock = std::chrono::steady_clock;

    void turn();

    QTimer timer;
    Clock::time_point lastTurn = Clock::now();
    std::chrono::nanoseconds lastProcessorTime{0};
    LongestTurn longest;
};

} // namespace picker
