// Makes starts and ends of applications, as a user sees them, out of those of processes and
// windows. Pure logic on the main thread: facts come in by calls, conclusions go out by the `on...`
// members, during the call.
//
// A process of an application's own tree is a helper of it and no start, unless it has a terminal
// of its own. A process that executes another application starts that one, too, and both end with
// it. When the last process of an instance is gone, one that it left behind takes over. A start
// that finds a living instance, shows no window and ends has handed over to that instance: it is no
// end. An end is always said before any later start, for the end of one application lifts a lock
// and must not lift that of the next.
#pragma once

#include "linux/workspace/Instance.h"

#include <deque>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace workspace {

class InstanceTracker
{
public:
    /// An application starts. Its process is still in exec.
    std::function<void(const Instance& instance)> onStarted;

    /// The first window of an instance whose start was reported.
    std::function<void(const Instance& instance)> onWindowShown;

    /// The instance is gone from the list already.
    std::function<void(const Instance& instance)> onEnded;

    /// A start that handed over is gone from the list.
    std::function<void(const Instance& instance)> onHandedOver;

    /// The end of this process is to be reported by `processEnded`.
    std::function<void(pid_t pid, std::uint64_t startTime)> onWatchWanted;

    /// Asked whether that very process still runs. Unset: all do.
    std::function<bool(pid_t pid, std::uint64_t startTime)> isAlive;

    /// Asked for the processes that an instance may have left behind. Unset: none.
    std::function<std::vector<proc::ProcessFacts>(const Instance& instance)> survivorsOf;

    /// What ran before this program: listed without any conclusion. `ancestors`: the nearest first.
    void alreadyRunning(
        const proc::ProcessFacts& facts,
        const KnownApplicationPtr& application,
        const std::vector<pid_t>& ancestors
    );

    void processStarted(
        const proc::ProcessFacts& facts,
        const KnownApplicationPtr& application,
        const std::vector<pid_t>& ancestors
    );

    /// A known process executes something that is no application: it stays what it is.
    void processBecame(const proc::ProcessFacts& facts);

    void processEnded(pid_t pid, std::uint64_t startTime);

    void windowShown(const InstancePtr& instance) const;

    /// The latest instance that the process is known to be a part of; empty when there is none.
    InstancePtr instanceOf(pid_t pid) const;

    /// The same, or else that of the nearest ancestor which is part of one.
    InstancePtr instanceOf(pid_t pid, const std::vector<pid_t>& ancestors) const;

    /// In order of appearance.
    const std::vector<InstancePtr>& instances() const { return list; }

    /// Says what ended without being heard of.
    void settle();

private:
    void forgetEarlierOwner(const proc::ProcessFacts& facts);
    bool joins(
        const proc::ProcessFacts& facts,
        const KnownApplicationPtr& application,
        const std::vector<pid_t>& ancestors
    );
    InstancePtr add(const proc::ProcessFacts& facts, const KnownApplicationPtr& application);
    void addProcess(Instance& instance, pid_t pid, std::uint64_t startTime) const;
    void remember(pid_t pid, std::uint64_t startTime);
    void leave(const InstancePtr& instance, pid_t pid);
    bool isTakenOver(Instance& instance);
    void finish(const InstancePtr& instance);
    bool livesElsewhere(const Instance& instance) const;

    std::vector<InstancePtr> list;
    std::deque<std::pair<pid_t, std::uint64_t>> ended; // the latest ones
    std::uint64_t latest = 0;
};

} // namespace workspace
