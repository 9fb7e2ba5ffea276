// Queues whose main thread is the test's own: what other threads submit runs while it waits.
#pragma once

#include "platform/DispatchQueues.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>

class TestQueue final : public platform::DispatchQueues
{
public:
    void asyncGlobal(platform::Block block) override { asyncMain(std::move(block)); }

    void asyncMain(platform::Block block) override
    {
        {
            const std::scoped_lock lock(mutex);
            blocks.push_back(std::move(block));
        }
        submitted.notify_all();
    }

    /// Runs what is submitted until `done` holds. False when it does not within ten seconds.
    bool runUntil(const std::function<bool()>& done)
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!done()) {
            std::unique_lock lock(mutex);
            if (!submitted.wait_until(lock, deadline, [this] { return !blocks.empty(); })) {
                return false;
            }
            const platform::Block block = std::move(blocks.front());
            blocks.pop_front();
            lock.unlock();
            block();
        }
        return true;
    }

private:
    std::mutex mutex;
    std::condition_variable submitted;
    std::deque<platform::Block> blocks;
};
