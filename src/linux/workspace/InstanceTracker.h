// Makes starts and ends of applications, as a user sees them, out of those of processes and
// windows. Pure logic on the main thread: facts come in by calls, conclusions go out by the `on...`
// members, during the call.
//
// A process of an application's own tree is a helper of it and no start, unless it has a terminal
// of its own. A start that finds a living instance, shows no window and ends has handed over to
// that instance: it is no end. When the last process of an instance is gone, a process of the same
// executable that survived it takes over; whoever asks for survivors does so after a grace.
#pragma once

#include "linux/workspace/Instance.h"

#include <functional>
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

    /// The last known process ended: `graceOver` is to be called a little later.
    std::function<void(const InstancePtr& instance)> onGraceWanted;

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

    void processEnded(pid_t pid, std::uint64_t startTime);

    /// `survivors`: processes that run now and execute what the instance's leader executed.
    void graceOver(const InstancePtr& instance, const std::vector<proc::ProcessFacts>& survivors);

    void windowShown(const InstancePtr& instance);

    /// The instance that the process is known to be a part of; empty when there is none.
    InstancePtr instanceOf(pid_t pid) const;

    /// The same, or else that of the nearest ancestor which is part of one.
    InstancePtr instanceOf(pid_t pid, const std::vector<pid_t>& ancestors) const;

    /// In order of appearance.
    const std::vector<InstancePtr>& instances() const { return list; }

private:
    bool joins(
        const proc::ProcessFacts& facts,
        const KnownApplicationPtr& application,
        const std::vector<pid_t>& ancestors
    );
    InstancePtr add(const proc::ProcessFacts& facts, const KnownApplicationPtr& application);
    void addProcess(Instance& instance, pid_t pid, std::uint64_t startTime);
    void leave(const InstancePtr& instance, pid_t pid);
    void finish(const InstancePtr& instance);
    bool livesElsewhere(const Instance& instance) const;

    std::vector<InstancePtr> list;
    std::uint64_t latest = 0;
};

} // namespace workspace
