#include "linux/proc/ProcessScan.h"

#include "platform/Call.h"

#include <algorithm>
#include <utility>

namespace proc {

ProcessScan::ProcessScan(const ProcFilesystem& processes) : processes(processes) {}

std::vector<ProcessFacts> ProcessScan::prime()
{
    known.clear();
    std::vector<ProcessFacts> all = processes.allFacts();
    for (const ProcessFacts& facts : all) {
        known[facts.pid] = {facts.startTime, facts.executable, facts.arguments, false};
    }
    return all;
}

void ProcessScan::look()
{
    AllKnown before = std::exchange(known, {});
    std::vector<pid_t> forks;
    for (const pid_t pid : processes.processes(ProcFilesystem::Closed::LeftOut)) {
        auto entry = before.extract(pid);
        // Asked before anything else is read: what executes meanwhile differs at the next look.
        const std::optional<ProcessStatus> status = processes.status(pid);
        if (!status) {
            continue;
        }
        if (!entry.empty() && unchanged(pid, *status, entry.mapped())) {
            known.insert(std::move(entry));
        } else if (status->isFork) {
            forks.push_back(pid);
        } else {
            meet(pid);
        }
    }
    for (const pid_t pid : forks) {
        meetFork(pid, before);
    }
    keepClosed(before);
}

void ProcessScan::meet(pid_t pid)
{
    if (const std::optional<ProcessFacts> facts = processes.facts(pid)) {
        known[pid] = {facts->startTime, facts->executable, facts->arguments, false};
        platform::call(onExec, *facts);
    }
}

/// Between fork and exec a process shows what its parent executes: a terminal's child, for one,
/// looks like a second terminal. Only a fork of something that ended unseen stands for it.
void ProcessScan::meetFork(pid_t pid, const AllKnown& before)
{
    const std::optional<ProcessFacts> facts = processes.facts(pid);
    if (!facts) {
        return;
    }
    const auto isOrigin = [&](const auto& other) {
        return other.second.executable == facts->executable &&
               other.second.arguments == facts->arguments;
    };
    const bool isKnown = std::any_of(known.begin(), known.end(), isOrigin) ||
                         std::any_of(before.begin(), before.end(), isOrigin);
    known[pid] = {facts->startTime, facts->executable, facts->arguments, true};
    if (!isKnown) {
        platform::call(onExec, *facts);
    }
}

/// One that closed itself since is not gone.
void ProcessScan::keepClosed(AllKnown& before)
{
    std::erase_if(before, [this](const auto& entry) {
        const std::optional<ProcessStatus> status = processes.status(entry.first);
        return !status || status->startTime != entry.second.startTime;
    });
    known.merge(before);
}

bool ProcessScan::unchanged(pid_t pid, const ProcessStatus& status, const Known& known) const
{
    return status.startTime == known.startTime && (status.isFork || !known.isFork) &&
           processes.executable(pid) == known.executable &&
           processes.arguments(pid) == known.arguments;
}

} // namespace proc
