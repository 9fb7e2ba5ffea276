// Feeds the tracker: what the process source tells of processes and the window system of windows,
// each with the application that the index says it belongs to. Main thread; the process source's
// thread only looks up who a process is: most are nobody's, and the main thread never hears of
// them.
#pragma once

#include "linux/workspace/InstanceTracker.h"
#include "linux/workspace/OwnPrograms.h"
#include "linux/workspace/ProcessSource.h"
#include "platform/DispatchQueues.h"

#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

namespace workspace {

class InstanceFeed
{
public:
    struct Parts
    {
        InstanceTracker& tracker;
        ProcessSource& processes;
        const OwnPrograms& applications;
        WindowSystem* windows = nullptr; // none: applications start, but never show a window
        platform::DispatchQueues& queues;
    };

    /// Everything in `parts` must outlive this. Listens from `start` on.
    explicit InstanceFeed(Parts parts);
    InstanceFeed(const InstanceFeed&) = delete;
    InstanceFeed& operator=(const InstanceFeed&) = delete;
    InstanceFeed(InstanceFeed&&) = delete;
    InstanceFeed& operator=(InstanceFeed&&) = delete;
    ~InstanceFeed();

    /// The instance in front is another one; empty when there is none.
    std::function<void(const InstancePtr& instance)> onActiveChanged;

    /// Calls `ready` once what runs already is known to the tracker.
    void start(std::function<void()> ready);

    /// A process that this program started, known before anybody else reports it.
    void startedByUs(const proc::ProcessFacts& facts);

private:
    struct Sighting
    {
        proc::ProcessFacts facts;
        KnownApplicationPtr application;
        std::vector<pid_t> ancestors;
    };

    void wireTracker();
    void wireProcesses();
    void wireWindows();
    void startLater(Sighting sighting);
    void becomeLater(const proc::ProcessFacts& facts);
    void post(platform::Block block);
    std::vector<Sighting> sightingsOf(const std::vector<proc::ProcessFacts>& all) const;
    void takeSnapshot(const std::vector<Sighting>& sightings);
    void take(const Sighting& sighting);
    void windowShown(const WindowFacts& window);
    InstancePtr instanceOfWindow(const WindowFacts& window, const std::vector<pid_t>& ancestors);
    void activeProcessChanged(pid_t process) const;
    std::vector<proc::ProcessFacts> survivorsOf(const Instance& instance) const;
    void watch(pid_t pid, std::uint64_t startTime);
    bool isWatched(pid_t pid);

    Parts parts;
    std::function<void()> onReady;
    bool listening = false; // what ran before is known; what comes now is news
    std::mutex mutex;
    std::set<pid_t> watched; // guarded by the mutex
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);
};

} // namespace workspace
