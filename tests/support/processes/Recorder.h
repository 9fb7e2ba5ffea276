// Collects what another thread reports and waits until it holds what a test expects.
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>
#include <vector>

namespace processes {

template <typename Item> class Recorder
{
public:
    void add(Item item)
    {
        {
            const std::scoped_lock lock(mutex);
            items.push_back(std::move(item));
        }
        changed.notify_all();
    }

    /// True as soon as one item satisfies the predicate, false after ten seconds without.
    template <typename Predicate> bool waitForOne(Predicate predicate)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, std::chrono::seconds(10), [&] {
            return std::any_of(items.begin(), items.end(), predicate);
        });
    }

    std::vector<Item> all()
    {
        const std::scoped_lock lock(mutex);
        return items;
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<Item> items;
};

} // namespace processes
