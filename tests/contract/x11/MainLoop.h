// A main thread for adapters under test: runs what they queue for it, and their timers, until a
// condition holds.
#pragma once

#include "platform/DispatchQueues.h"
#include "platform/Timers.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <utility>

class MainLoop final : public platform::DispatchQueues, public platform::Timers
{
public:
    using Clock = std::chrono::steady_clock;

    void asyncGlobal(platform::Block block) override { asyncMain(std::move(block)); }

    void asyncMain(platform::Block block) override
    {
        const std::lock_guard lock(mutex);
        blocks.push_back(std::move(block));
        changed.notify_one();
    }

    void scheduleTimer(double seconds, bool /*repeats*/, platform::Block block) override
    {
        const auto delay =
            std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
        timers.emplace(Clock::now() + delay, std::move(block));
    }

    /// Runs blocks and timers until the condition holds; false when it does not within 20 seconds.
    bool runUntil(const std::function<bool()>& condition)
    {
        const Clock::time_point deadline = Clock::now() + std::chrono::seconds(20);
        while (!condition()) {
            if (Clock::now() > deadline) {
                return false;
            }
            runTimers();
            platform::Block block = take();
            if (block) {
                block();
            }
        }
        return true;
    }

private:
    platform::Block take()
    {
        std::unique_lock lock(mutex);
        // Conditions also look at the display, whose changes wake nobody here.
        changed.wait_for(lock, std::chrono::milliseconds(2), [this] { return !blocks.empty(); });
        if (blocks.empty()) {
            return {};
        }
        platform::Block block = std::move(blocks.front());
        blocks.pop_front();
        return block;
    }

    void runTimers()
    {
        while (!timers.empty() && timers.begin()->first <= Clock::now()) {
            const platform::Block block = std::move(timers.begin()->second);
            timers.erase(timers.begin());
            block();
        }
    }

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<platform::Block> blocks;
    std::multimap<Clock::time_point, platform::Block> timers;
};
