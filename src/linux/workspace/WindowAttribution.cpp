#include "linux/workspace/WindowAttribution.h"

#include <optional>
#include <utility>

namespace workspace {

WindowAttribution::WindowAttribution(
    InstanceTracker& tracker, ProcessSource& processes, OwnPrograms& applications
)
    : tracker(tracker),
      processes(processes),
      applications(applications)
{
}

InstancePtr WindowAttribution::instanceOf(const WindowFacts& window, bool isNews) const
{
    return window.processIdentifier > 0 ? ofProcess(window, isNews) : ofStray(window, isNews);
}

InstancePtr WindowAttribution::ofProcess(const WindowFacts& window, bool isNews) const
{
    const pid_t pid = window.processIdentifier;
    InstancePtr host = tracker.instances().ofProcess(pid, processes.ancestorsOf(pid));
    const KnownApplicationPtr application = applicationOf(window, host);
    if (application == nullptr) {
        return host;
    }
    if (host != nullptr && host->application->identifier == application->identifier) {
        learnFrom(pid, *application);
        return host;
    }
    InstancePtr own = tracker.instances().ofProcessAs(application->identifier, pid);
    return own != nullptr ? own : ofOther(window, application, std::move(host), isNews);
}

/// By what the window says; where that is nothing, by what its process is a copy of, unless that is
/// what its ancestor was started for.
KnownApplicationPtr
WindowAttribution::applicationOf(const WindowFacts& window, const InstancePtr& host) const
{
    const pid_t pid = window.processIdentifier;
    KnownApplicationPtr application = applications.ofWindow(window);
    const bool isPart = host != nullptr && (host->processes.contains(pid) || !host->windowShown);
    if (application != nullptr || isPart) {
        return application;
    }
    const std::optional<proc::ProcessFacts> facts = processes.factsOf(pid);
    return facts ? applications.ofCopy(*facts) : nullptr;
}

/// A window whose process is nobody's here, such as that of a program on another machine: what it
/// says about itself is all there is.
InstancePtr WindowAttribution::ofStray(const WindowFacts& window, bool isNews) const
{
    const KnownApplicationPtr application = applications.ofWindow(window);
    if (application == nullptr) {
        return nullptr;
    }
    InstancePtr known = tracker.instances().withoutProcess(application->identifier);
    if (known != nullptr) {
        return known;
    }
    const Sighting sighting{{}, application, {}, false, false};
    return appear(sighting, isNews);
}

InstancePtr WindowAttribution::ofOther(
    const WindowFacts& window, const KnownApplicationPtr& application, InstancePtr host, bool isNews
) const
{
    const pid_t pid = window.processIdentifier;
    const std::optional<proc::ProcessFacts> facts =
        mayShow(host, application, pid) ? processes.factsOf(pid) : std::nullopt;
    if (!facts) {
        return host;
    }
    const Sighting sighting{*facts, application, processes.ancestorsOf(pid), false, false};
    learnFrom(pid, *application);
    return appear(sighting, isNews);
}

InstancePtr WindowAttribution::appear(const Sighting& sighting, bool isNews) const
{
    return isNews ? tracker.startedByWindow(sighting) : tracker.runningByWindow(sighting);
}

/// What a process executes counts for more than what its windows say, unless that is several
/// applications.
bool WindowAttribution::mayShow(
    const InstancePtr& host, const KnownApplicationPtr& application, pid_t pid
) const
{
    return host == nullptr || !host->processes.contains(pid) ||
           applications.shareProgram(host->application->identifier, application->identifier);
}

void WindowAttribution::learnFrom(pid_t pid, const KnownApplication& application) const
{
    const std::optional<proc::ProcessFacts> facts = processes.factsOf(pid);
    if (facts && applications.ofProcess(*facts) == nullptr) {
        applications.learn(*facts, application.identifier);
    }
}

} // namespace workspace
