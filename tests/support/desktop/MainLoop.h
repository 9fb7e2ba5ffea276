// The thread of a test as the main thread, with its queue and its timers, for adapters that bring
// their results there from threads of their own. Blocks of the global queue run on the main one.
#pragma once

#include "platform/DispatchQueues.h"
#include "platform/Timers.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <utility>

namespace desktop {

class MainLoop final : public platform::DispatchQueues, public platform::Timers
{
public:
    using Clock = std::chrono::steady_clock;

    void asyncGlobal(platform::Block block) override { asyncMain(std::move(block)); }

    void asyncMain(platform::Block block) override
    {
        const std::lock_guard lock(mutex);
        blocks.push_back(std::move(block));
        changed.notify_all();
    }

    /// On the thread of the test only.
    void scheduleTimer(double seconds, bool repeats, platform::Block block) override
    {
        const auto interval =
            std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
        Timer timer{std::move(block), std::nullopt};
        if (repeats) {
            timer.interval = interval;
        }
        timers.emplace(Clock::now() + interval, std::move(timer));
    }

    /// Runs blocks and timers as they come until the condition holds; false when it does not in
    /// time.
    bool runUntil(
        const std::function<bool()>& condition,
        std::chrono::milliseconds timeout = std::chrono::seconds(30)
    )
    {
        const auto end = Clock::now() + timeout;
        while (!condition()) {
            if (Clock::now() >= end) {
                return false;
            }
            runTimers();
            runNext();
        }
        return true;
    }

    /// Runs all that is queued by now; true when that is done.
    bool runsDry()
    {
        bool done = false;
        asyncMain([&done] { done = true; });
        return runUntil([&done] { return done; });
    }

private:
    struct Timer
    {
        platform::Block block;
        std::optional<Clock::duration> interval; // of one that repeats
    };

    void runNext()
    {
        // Conditions also look at what changes without a word to this loop.
        constexpr std::chrono::milliseconds LOOK_AGAIN(2);
        std::unique_lock lock(mutex);
        if (!changed.wait_for(lock, LOOK_AGAIN, [this] { return !blocks.empty(); })) {
            return;
        }
        const platform::Block block = std::move(blocks.front());
        blocks.pop_front();
        lock.unlock();
        block();
    }

    void runTimers()
    {
        while (!timers.empty() && timers.begin()->first <= Clock::now()) {
            const Timer due = std::move(timers.begin()->second);
            timers.erase(timers.begin());
            if (due.interval) {
                timers.emplace(Clock::now() + *due.interval, due);
            }
            due.block();
        }
    }

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<platform::Block> blocks;
    std::multimap<Clock::time_point, Timer> timers;
};

} // namespace desktop
