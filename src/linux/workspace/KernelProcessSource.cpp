#include "linux/workspace/KernelProcessSource.h"

#include <utility>

namespace workspace {

KernelProcessSource::KernelProcessSource(proc::Report report) : events(std::move(report)) {}

void KernelProcessSource::start()
{
    events.onExec = onExec;
    events.onExit = onExit;
    events.onSnapshot = onSnapshot;
    events.start();
}

void KernelProcessSource::watchExit(pid_t pid, std::uint64_t startTime)
{
    events.watchExit(pid, startTime);
}

void KernelProcessSource::watchExecutables(std::set<std::string> paths)
{
    events.watchExecutables(std::move(paths));
}

std::vector<pid_t> KernelProcessSource::ancestorsOf(pid_t pid) const
{
    return processes.ancestors(pid);
}

std::optional<proc::ProcessFacts> KernelProcessSource::factsOf(pid_t pid) const
{
    return processes.facts(pid);
}

bool KernelProcessSource::alive(pid_t pid, std::uint64_t startTime) const
{
    return processes.alive(pid, startTime);
}

std::vector<proc::ProcessFacts> KernelProcessSource::executing(const std::string& executable) const
{
    std::vector<proc::ProcessFacts> result = processes.allFacts();
    std::erase_if(result, [&](const proc::ProcessFacts& facts) {
        return facts.executable != executable;
    });
    return result;
}

} // namespace workspace
