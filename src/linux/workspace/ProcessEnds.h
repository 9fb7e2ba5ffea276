// Concludes from ends of processes which instances are at their end and which starts only handed
// over. Main thread; what it concludes goes out by the `on...` members, during the call.
#pragma once

#include "linux/workspace/EndedProcesses.h"
#include "linux/workspace/HandOver.h"
#include "linux/workspace/InstanceList.h"
#include "linux/workspace/Questions.h"
#include "linux/workspace/Succession.h"

#include <functional>
#include <utility>
#include <vector>

namespace workspace {

class ProcessEnds
{
public:
    /// All of them must outlive this.
    ProcessEnds(
        InstanceList& list,
        const Questions& ask,
        const Succession& succession,
        const HandOver& handOver
    );

    /// The instance is gone from the list already.
    std::function<void(const Instance& instance)> onEnded;

    /// A start that handed over is gone from the list.
    std::function<void(const Instance& instance)> onHandedOver;

    /// A process took an instance over.
    std::function<void(pid_t pid, std::uint64_t startTime)> onTakenOver;

    void processEnded(pid_t pid, std::uint64_t startTime);

    /// Whether the end of that very process was heard of lately.
    bool wasHeardOf(pid_t pid, std::uint64_t startTime) const;

    /// The process has the identifier that another one had before, which is gone therefore.
    void forgetEarlierOwner(const proc::ProcessFacts& facts);

    /// The process is no part of the instance, and never was.
    void giveBack(const InstancePtr& instance, pid_t pid);

    /// Says what ended without being heard of.
    void settle();

private:
    using Matches = std::function<bool(const Instance& instance)>;
    using Process = std::pair<pid_t, std::uint64_t>; // with its start time

    void settleLaterThan(const Instance& instance);
    void settleEarlierThan(const Instance& instance);
    void settleOthers(const Matches& matches);
    std::vector<Process> processesOf(const Matches& matches) const;
    bool isGone(pid_t pid, std::uint64_t startTime) const;
    void leave(const InstancePtr& instance, pid_t pid);
    bool isTakenOver(Instance& instance);
    void finish(const InstancePtr& instance);

    InstanceList& list;
    const Questions& ask;
    const Succession& succession;
    const HandOver& handOver;
    EndedProcesses ended;
};

} // namespace workspace
