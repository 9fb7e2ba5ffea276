// The thread of a test as the main thread, with its queue, for adapters that bring their results
// there from threads of their own. Blocks of the global queue run on the main one.
#pragma once

#include "platform/DispatchQueues.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>

namespace desktop {

class MainLoop final : public platform::DispatchQueues
{
public:
    void asyncGlobal(platform::Block block) override { asyncMain(std::move(block)); }

    void asyncMain(platform::Block block) override
    {
        const std::lock_guard lock(mutex);
        blocks.push_back(std::move(block));
        changed.notify_all();
    }

    /// Runs blocks as they come until the condition holds; false when it does not in time.
    bool runUntil(
        const std::function<bool()>& condition,
        std::chrono::milliseconds timeout = std::chrono::seconds(30)
    )
    {
        const auto end = std::chrono::steady_clock::now() + timeout;
        while (!condition()) {
            if (std::chrono::steady_clock::now() >= end) {
                return false;
            }
            runNext(std::chrono::milliseconds(5));
        }
        return true;
    }

private:
    void runNext(std::chrono::milliseconds patience)
    {
        std::unique_lock lock(mutex);
        if (!changed.wait_for(lock, patience, [this] { return !blocks.empty(); })) {
            return;
        }
        const platform::Block block = std::move(blocks.front());
        blocks.pop_front();
        lock.unlock();
        block();
    }

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<platform::Block> blocks;
};

} // namespace desktop
