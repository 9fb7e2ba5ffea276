#include "linux/workspace/InstanceFeed.h"

#include "linux/proc/Shells.h"
#include "platform/Call.h"

#include <optional>
#include <utility>

#include <unistd.h>

namespace workspace {

InstanceFeed::InstanceFeed(Parts given)
    : parts(std::move(given)),
      membership(parts.processes, parts.session),
      survivors(parts.tracker.instances(), parts.processes, parts.applications, membership),
      attribution(parts.tracker, parts.processes, parts.applications)
{
    wireTracker();
    wireProcesses();
    wireWindows();
}

void InstanceFeed::start(std::function<void()> ready)
{
    onReady = std::move(ready);
    parts.processes.watchExecutables(parts.applications.executables());
    parts.processes.start();
}

void InstanceFeed::wireTracker()
{
    InstanceTracker& tracker = parts.tracker;
    tracker.onWatchWanted = [this](pid_t pid, std::uint64_t startTime) { watch(pid, startTime); };
    tracker.ask.isAlive = [this](pid_t pid, std::uint64_t startTime) {
        return parts.processes.alive(pid, startTime);
    };
    tracker.ask.shareProgram = [this](const std::string& identifier, const std::string& other) {
        return parts.applications.shareProgram(identifier, other);
    };
    tracker.ask.mayHandOver = [this](const std::string& identifier, const std::string& other) {
        return parts.applications.mayHandOver(identifier, other);
    };
    tracker.ask.survivorsOf = [this](const Instance& instance) { return survivors.of(instance); };
}

void InstanceFeed::wireProcesses()
{
    parts.processes.isOfInterest = [this](pid_t pid, const std::string& executable) {
        return isOfInterest(pid, executable);
    };
    parts.processes.onExec = [this](const proc::ProcessFacts& facts) { executed(facts); };
    parts.processes.onExit = [this](pid_t pid, std::uint64_t startTime) {
        watched.remove(pid);
        post([this, pid, startTime] { parts.tracker.processEnded(pid, startTime); });
    };
    parts.processes.onSnapshot = [this](const std::vector<proc::ProcessFacts>& all) {
        post([this, sightings = sightingsOf(all)] { takeSnapshot(sightings); });
    };
}

void InstanceFeed::executed(const proc::ProcessFacts& facts)
{
    KnownApplicationPtr application = parts.applications.ofProcess(facts);
    if (application == nullptr) {
        executedOther(facts);
    } else if (auto sighting = sightingOf(facts, std::move(application))) {
        startLater(std::move(*sighting));
    }
}

void InstanceFeed::executedOther(const proc::ProcessFacts& facts)
{
    if (watched.contains(facts.pid)) {
        post([this, facts] { parts.tracker.processBecame(facts); });
    } else if (watched.isScript(facts.parent)) {
        post([this, facts] { parts.tracker.childStarted(facts); });
    }
}

/// Nothing for a process of another session.
std::optional<Sighting>
InstanceFeed::sightingOf(const proc::ProcessFacts& facts, KnownApplicationPtr application) const
{
    const proc::ProcessEnvironment environment = parts.processes.environmentOf(facts.pid);
    std::vector<pid_t> ancestors = parts.processes.ancestorsOf(facts.pid);
    if (membership.isForeign(facts, environment, ancestors)) {
        return std::nullopt;
    }
    return Sighting{
        .facts = facts,
        .application = std::move(application),
        .ancestors = std::move(ancestors),
        .launched = environment.launchedEntry.has_value(),
        .byBus = parts.processes.isStartedByBus(facts)};
}

void InstanceFeed::startedByUs(const proc::ProcessFacts& facts)
{
    startLater({.facts = facts, .application = parts.applications.ofProcess(facts)});
}

void InstanceFeed::startLater(Sighting sighting)
{
    if (sighting.application != nullptr) {
        post([this, sighting = std::move(sighting)] { parts.tracker.processStarted(sighting); });
    }
}

void InstanceFeed::wireWindows()
{
    if (parts.windows == nullptr) {
        return;
    }
    parts.windows->onWindowShown = [this](const WindowFacts& window) { windowShown(window); };
    parts.windows->onWindowGone = [this](std::uint64_t window) {
        parts.tracker.windowGone(window);
    };
    parts.windows->onLaunchHint = [this](const std::string& entry) { hinted(entry); };
    parts.windows->onActiveChanged = [this](pid_t process, std::uint64_t window) {
        activeChanged(process, window);
    };
}

void InstanceFeed::post(platform::Block block)
{
    parts.queues.asyncMain(lifetime.guard(std::move(block)));
}

std::vector<Sighting> InstanceFeed::sightingsOf(const std::vector<proc::ProcessFacts>& all) const
{
    std::vector<Sighting> result;
    for (const proc::ProcessFacts& facts : all) {
        KnownApplicationPtr application = parts.applications.ofProcess(facts);
        auto sighting =
            application == nullptr ? std::nullopt : sightingOf(facts, std::move(application));
        if (sighting) {
            result.push_back(std::move(*sighting));
        }
    }
    return result;
}

/// The first one fills the list. A later one makes up for events that were lost.
void InstanceFeed::takeSnapshot(const std::vector<Sighting>& sightings)
{
    parts.tracker.settle();
    for (const Sighting& sighting : sightings) {
        take(sighting);
    }
    if (!listening && parts.windows != nullptr) {
        parts.windows->start();
    }
    if (!std::exchange(listening, true)) {
        platform::call(std::exchange(onReady, nullptr));
    }
}

void InstanceFeed::take(const Sighting& sighting)
{
    if (listening) {
        parts.tracker.processStarted(sighting);
    } else {
        parts.tracker.alreadyRunning(sighting);
    }
}

void InstanceFeed::windowShown(const WindowFacts& window)
{
    const pid_t pid = window.processIdentifier;
    if (pid == getpid()) {
        return;
    }
    if (listening) {
        startUnheardOf(pid);
    }
    using Seen = WindowAttribution::Seen;
    const Seen seen = listening ? Seen::Now : Seen::AtStart;
    const InstancePtr instance = attribution.instanceOf(window, seen);
    if (instance == nullptr) {
        return;
    }
    if (listening) {
        parts.tracker.windowShown(instance, window.window);
    } else {
        InstanceTracker::windowThere(instance, window.window);
    }
}

/// A window may be heard of before the exec of its process is.
void InstanceFeed::startUnheardOf(pid_t pid)
{
    const bool isKnown = pid <= 0 || parts.tracker.instances().ofProcess(pid) != nullptr;
    const auto facts = isKnown ? std::nullopt : parts.processes.factsOf(pid);
    if (facts && !facts->isFork) {
        for (const Sighting& sighting : sightingsOf({*facts})) {
            take(sighting);
        }
    }
}

void InstanceFeed::hinted(const std::string& entry) const
{
    const KnownApplicationPtr application = parts.applications.ofEntry(entry);
    if (application != nullptr) {
        parts.tracker.hinted(application->identifier);
    }
}

void InstanceFeed::activeChanged(pid_t process, std::uint64_t window) const
{
    InstancePtr instance = parts.tracker.instances().showing(window);
    if (instance == nullptr && process != 0) {
        instance =
            parts.tracker.instances().ofProcess(process, parts.processes.ancestorsOf(process));
    }
    platform::call(onActiveChanged, instance);
}

void InstanceFeed::watch(pid_t pid, std::uint64_t startTime)
{
    const InstancePtr instance = parts.tracker.instances().ofProcess(pid);
    const bool isScript = instance != nullptr && instance->leader.pid == pid &&
                          proc::isShell(instance->leader.executable);
    watched.add(pid, isScript);
    parts.processes.watchExit(pid, startTime);
}

/// A shell that leads an instance does the application's work by its children.
bool InstanceFeed::isOfInterest(pid_t pid, const std::string& executable) const
{
    return parts.applications.mayBeApplication(executable) || watched.concerns(pid);
}

} // namespace workspace
