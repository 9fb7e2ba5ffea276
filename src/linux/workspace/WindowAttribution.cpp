#include "linux/workspace/WindowAttribution.h"

#include <optional>
#include <utility>

namespace workspace {

WindowAttribution::WindowAttribution(
    InstanceTracker& tracker, ProcessSource& processes, OwnPrograms& applications
)
    : tracker(tracker),
      awaited(tracker.instances(), tracker.ask),
      processes(processes),
      applications(applications)
{
}

InstancePtr WindowAttribution::instanceOf(const WindowFacts& window, Seen seen) const
{
    return window.processIdentifier > 0 ? ofProcess(window, seen) : ofStray(window, seen);
}

InstancePtr WindowAttribution::ofProcess(const WindowFacts& window, Seen seen) const
{
    const pid_t pid = window.processIdentifier;
    InstancePtr host = tracker.instances().ofProcess(pid, processes.ancestorsOf(pid));
    const KnownApplicationPtr application = applicationOf(window, host, seen);
    if (application == nullptr) {
        const bool isHosts = host != nullptr && (host->windowShown || isPartOf(*host, pid, seen));
        return isHosts ? host : nullptr;
    }
    if (host != nullptr && host->application->identifier == application->identifier) {
        learnFrom(window, *application);
        return host;
    }
    InstancePtr own = tracker.instances().ofProcessAs(application->identifier, pid);
    return own != nullptr ? own : ofOther(window, application, std::move(host), seen);
}

/// By what the window says; where that is no protected application, by what its process is a copy
/// of, unless that is what the host was started for. Empty where it is the host's.
KnownApplicationPtr WindowAttribution::applicationOf(
    const WindowFacts& window, const InstancePtr& host, Seen seen
) const
{
    const pid_t pid = window.processIdentifier;
    KnownApplicationPtr named = applications.ofWindow(window);
    if (named != nullptr && named->chosen) {
        return named;
    }
    if (host != nullptr && !isDoubtful(*host->application) && isPartOf(*host, pid, seen)) {
        return named != nullptr && mayHide(*named, *host, pid) ? nullptr : named;
    }
    const std::optional<proc::ProcessFacts> facts = processes.factsOf(pid);
    KnownApplicationPtr copied = facts ? applications.ofCopy(*facts) : nullptr;
    return copied != nullptr ? copied : named;
}

/// Of what runs for long without a window of its own, as panels and window managers do, the
/// descendants are what the user started by it. Of what ran before this program it is not known how
/// long.
bool WindowAttribution::isPartOf(const Instance& host, pid_t pid, Seen seen) const
{
    const bool mayBeStarting =
        !host.windowShown && (awaited.contain(host) || seen == Seen::AtStart);
    return host.processes.contains(pid) || mayBeStarting;
}

/// A window whose process is nobody's here, such as that of a program on another machine: what it
/// says about itself is all there is.
InstancePtr WindowAttribution::ofStray(const WindowFacts& window, Seen seen) const
{
    const KnownApplicationPtr application = applications.ofWindow(window);
    if (application == nullptr) {
        return nullptr;
    }
    InstancePtr known = tracker.instances().withoutProcess(application->identifier);
    if (known != nullptr) {
        return known;
    }
    const Sighting sighting{.application = application};
    return appear(sighting, seen);
}

InstancePtr WindowAttribution::ofOther(
    const WindowFacts& window, const KnownApplicationPtr& application, InstancePtr host, Seen seen
) const
{
    const pid_t pid = window.processIdentifier;
    const std::optional<proc::ProcessFacts> facts =
        mayShow(host, application, pid) ? processes.factsOf(pid) : std::nullopt;
    if (!facts) {
        return host;
    }
    const Sighting sighting{
        .facts = *facts, .application = application, .ancestors = processes.ancestorsOf(pid)};
    // What a stranger calls its windows says nothing about the next one that executes the same.
    const KnownApplicationPtr copied = applications.ofCopy(*facts);
    if (copied != nullptr && copied->identifier == application->identifier) {
        learnFrom(window, *application);
    }
    return appear(sighting, seen);
}

InstancePtr WindowAttribution::appear(const Sighting& sighting, Seen seen) const
{
    return seen == Seen::Now ? tracker.startedByWindow(sighting)
                             : tracker.runningByWindow(sighting);
}

/// What a process executes counts for more than what its windows say, unless that is several
/// applications, or may be known only to hide the one that the windows tell of.
bool WindowAttribution::mayShow(
    const InstancePtr& host, const KnownApplicationPtr& application, pid_t pid
) const
{
    return host == nullptr || !host->processes.contains(pid) ||
           (application->chosen && isDoubtful(*host->application)) ||
           applications.shareProgram(host->application->identifier, application->identifier);
}

/// True of a window's name that may be there only to take the window from its process's protected
/// application.
bool WindowAttribution::mayHide(const KnownApplication& named, const Instance& host, pid_t pid)
    const
{
    return host.application->chosen && host.processes.contains(pid) && isDoubtful(named) &&
           !applications.shareProgram(host.application->identifier, named.identifier);
}

/// An entry that anybody at the desktop could have written takes no window from a protected
/// application, unless it is protected itself.
bool WindowAttribution::isDoubtful(const KnownApplication& application) const
{
    const KnownApplicationPtr now = applications.withIdentifier(application.identifier);
    const KnownApplication& known = now != nullptr ? *now : application;
    return known.homemade && !known.chosen;
}

void WindowAttribution::learnFrom(const WindowFacts& window, const KnownApplication& application)
    const
{
    if (window.remote) {
        return; // what brought the window here brings those of any program
    }
    const std::optional<proc::ProcessFacts> facts = processes.factsOf(window.processIdentifier);
    if (facts && applications.ofProcess(*facts) == nullptr) {
        applications.learn(*facts, application.identifier);
    }
}

} // namespace workspace
