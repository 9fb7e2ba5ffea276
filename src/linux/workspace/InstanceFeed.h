// Feeds the tracker: what the process source tells of processes and the window system of windows,
// each with the application that the index says it belongs to. Main thread; the process source's
// thread only looks up who a process is: most are nobody's, and the main thread never hears of
// them.
#pragma once

#include "linux/workspace/GraphicalSession.h"
#include "linux/workspace/InstanceTracker.h"
#include "linux/workspace/OwnPrograms.h"
#include "linux/workspace/ProcessSource.h"
#include "linux/workspace/SessionMembership.h"
#include "linux/workspace/Survivors.h"
#include "linux/workspace/WatchedProcesses.h"
#include "linux/workspace/WindowAttribution.h"
#include "platform/DispatchQueues.h"
#include "platform/Lifetime.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace workspace {

class InstanceFeed
{
public:
    struct Parts
    {
        InstanceTracker& tracker;
        ProcessSource& processes;
        OwnPrograms& applications;
        WindowSystem* windows = nullptr; // none: applications start, but never show a window
        platform::DispatchQueues& queues;
        GraphicalSession session;
    };

    /// Everything in `parts` must outlive this. Listens from `start` on.
    explicit InstanceFeed(Parts given);
    InstanceFeed(const InstanceFeed&) = delete;
    InstanceFeed& operator=(const InstanceFeed&) = delete;
    InstanceFeed(InstanceFeed&&) = delete;
    InstanceFeed& operator=(InstanceFeed&&) = delete;
    ~InstanceFeed() = default;

    /// The instance in front is another one; empty when there is none.
    std::function<void(const InstancePtr& instance)> onActiveChanged;

    /// Calls `ready` once what runs already is known to the tracker.
    void start(std::function<void()> ready);

    /// A process that this program started, known before anybody else reports it.
    void startedByUs(const proc::ProcessFacts& facts);

private:
    void wireTracker();
    void wireProcesses();
    void wireWindows();
    void startLater(Sighting sighting);
    void executed(const proc::ProcessFacts& facts);
    void executedOther(const proc::ProcessFacts& facts);
    std::optional<Sighting>
    sightingOf(const proc::ProcessFacts& facts, KnownApplicationPtr application) const;
    void post(platform::Block block);
    std::vector<Sighting> sightingsOf(const std::vector<proc::ProcessFacts>& all) const;
    void takeSnapshot(const std::vector<Sighting>& sightings);
    void take(const Sighting& sighting);
    void windowShown(const WindowFacts& window);
    void startUnheardOf(pid_t pid);
    void hinted(const std::string& entry) const;
    void activeChanged(pid_t process, std::uint64_t window) const;
    void watch(pid_t pid, std::uint64_t startTime);
    bool isOfInterest(pid_t pid, const std::string& executable) const;

    Parts parts;
    SessionMembership membership;
    Survivors survivors;
    WindowAttribution attribution;
    std::function<void()> onReady;
    bool listening = false; // what ran before is known; what comes now is news
    WatchedProcesses watched;
    platform::Lifetime lifetime;
};

} // namespace workspace
