// Where the workspace hears of processes: the kernel, or a test. Started and ended by the main
// thread; tells on one of its own.
#pragma once

#include "linux/proc/ProcRecords.h"
#include "linux/proc/ProcessFacts.h"
#include "platform/Port.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace workspace {

class ProcessSource : public platform::Port
{
public:
    /// On a thread of the source's own, in the order in which things happened. Set before `start`.
    std::function<void(const proc::ProcessFacts& facts)> onExec;
    std::function<void(pid_t pid, std::uint64_t startTime)> onExit;
    /// All that runs, oldest first: once at the start, and again when events were lost.
    std::function<void(const std::vector<proc::ProcessFacts>& all)> onSnapshot;

    /// Asked on the source's thread about each exec before anything else of it is looked at. Unset:
    /// all are of interest. The path is empty where it must not be read.
    std::function<bool(pid_t pid, const std::string& executable)> isOfInterest;

    virtual void start() = 0;
    virtual void watchExit(pid_t pid, std::uint64_t startTime) = 0;
    virtual void watchExecutables(std::set<std::string> paths) = 0;

    /// Ancestors of the process, the nearest first. Any thread.
    virtual std::vector<pid_t> ancestorsOf(pid_t pid) const = 0;

    /// The process as it is now, little of it where it is none of this user. Any thread.
    virtual std::optional<proc::ProcessFacts> factsOf(pid_t pid) const = 0;

    /// What the process was given on its way. Any thread.
    virtual proc::ProcessEnvironment environmentOf(pid_t pid) const = 0;

    /// True when the bus, or the session's manager, started it for somebody else. Any thread.
    virtual bool isStartedByBus(const proc::ProcessFacts& facts) const = 0;

    /// True while that very process runs. Any thread.
    virtual bool alive(pid_t pid, std::uint64_t startTime) const = 0;

    /// What runs now and executes the file. Any thread.
    virtual std::vector<proc::ProcessFacts> executing(const std::string& executable) const = 0;
};

} // namespace workspace
