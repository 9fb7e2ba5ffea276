#include "linux/workspace/KernelProcessSource.h"

#include "linux/files/Names.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace workspace {

KernelProcessSource::KernelProcessSource(platform::Report report) : events(std::move(report)) {}

void KernelProcessSource::start()
{
    events.isOfInterest = isOfInterest;
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
    std::optional<proc::ProcessFacts> facts = processes.settledFacts(pid);
    const auto status = facts ? std::nullopt : processes.status(pid);
    if (status && processes.alive(pid, status->startTime)) {
        facts.emplace();
        facts->pid = pid;
        facts->parent = status->parent;
        facts->terminal = status->terminal;
        facts->startTime = status->startTime;
    }
    return facts;
}

proc::ProcessEnvironment KernelProcessSource::environmentOf(pid_t pid) const
{
    return processes.environment(pid);
}

bool KernelProcessSource::isStartedByBus(const proc::ProcessFacts& facts) const
{
    constexpr std::array<std::string_view, 4> STARTERS{
        "dbus-daemon", "dbus-broker", "dbus-broker-launch", "systemd"};
    const std::string parent =
        facts.parent > 1 ? processes.executable(facts.parent).value_or("") : "";
    const std::string_view name = files::baseName(parent);
    return std::find(STARTERS.begin(), STARTERS.end(), name) != STARTERS.end();
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
