#include "linux/proc/ProcessScan.h"

#include "platform/Call.h"

#include <utility>

namespace proc {

ProcessScan::ProcessScan(const ProcFilesystem& processes) : processes(processes) {}

std::vector<ProcessFacts> ProcessScan::prime()
{
    known.clear();
    std::vector<ProcessFacts> all = processes.allFacts();
    for (const ProcessFacts& facts : all) {
        known[facts.pid] = {facts.startTime, facts.executable, facts.arguments};
    }
    return all;
}

void ProcessScan::look()
{
    std::map<pid_t, Known> before = std::exchange(known, {});
    for (const pid_t pid : processes.processes(ProcFilesystem::Closed::LeftOut)) {
        auto entry = before.extract(pid);
        if (!entry.empty() && unchanged(pid, entry.mapped())) {
            known.insert(std::move(entry));
            continue;
        }
        const std::optional<ProcessFacts> facts = processes.facts(pid);
        if (!facts) {
            continue;
        }
        known[pid] = {facts->startTime, facts->executable, facts->arguments};
        platform::call(onExec, *facts);
    }
    keepClosed(before);
}

/// One that closed itself since is not gone.
void ProcessScan::keepClosed(std::map<pid_t, Known>& before)
{
    std::erase_if(before, [this](const auto& entry) {
        const std::optional<ProcessStatus> status = processes.status(entry.first);
        return !status || status->startTime != entry.second.startTime;
    });
    known.merge(before);
}

bool ProcessScan::unchanged(pid_t pid, const Known& known) const
{
    const std::optional<ProcessStatus> status = processes.status(pid);
    return status && status->startTime == known.startTime &&
           processes.executable(pid) == known.executable &&
           processes.arguments(pid) == known.arguments;
}

} // namespace proc
