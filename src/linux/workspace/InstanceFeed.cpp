#include "linux/workspace/InstanceFeed.h"

#include <optional>
#include <utility>

#include <unistd.h>

namespace workspace {

InstanceFeed::InstanceFeed(Parts parts) : parts(parts)
{
    wireTracker();
    wireProcesses();
    wireWindows();
}

InstanceFeed::~InstanceFeed()
{
    *alive = false;
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
    tracker.isAlive = [this](pid_t pid, std::uint64_t startTime) {
        return parts.processes.alive(pid, startTime);
    };
    tracker.survivorsOf = [this](const Instance& instance) { return survivorsOf(instance); };
}

void InstanceFeed::wireProcesses()
{
    parts.processes.onExec = [this](const proc::ProcessFacts& facts) {
        KnownApplicationPtr application = parts.applications.ofProcess(facts);
        if (application != nullptr) {
            startLater({facts, std::move(application), parts.processes.ancestorsOf(facts.pid)});
            return;
        }
        if (isWatched(facts.pid)) {
            becomeLater(facts);
        }
    };
    parts.processes.onExit = [this](pid_t pid, std::uint64_t startTime) {
        {
            const std::lock_guard lock(mutex);
            watched.erase(pid);
        }
        post([this, pid, startTime] { parts.tracker.processEnded(pid, startTime); });
    };
    parts.processes.onSnapshot = [this](const std::vector<proc::ProcessFacts>& all) {
        post([this, sightings = sightingsOf(all)] { takeSnapshot(sightings); });
    };
}

void InstanceFeed::startedByUs(const proc::ProcessFacts& facts)
{
    startLater({facts, parts.applications.ofProcess(facts), {}});
}

void InstanceFeed::startLater(Sighting sighting)
{
    if (sighting.application != nullptr) {
        post([this, sighting = std::move(sighting)] {
            parts.tracker.processStarted(sighting.facts, sighting.application, sighting.ancestors);
        });
    }
}

void InstanceFeed::becomeLater(const proc::ProcessFacts& facts)
{
    post([this, facts] { parts.tracker.processBecame(facts); });
}

void InstanceFeed::wireWindows()
{
    if (parts.windows == nullptr) {
        return;
    }
    parts.windows->onWindowShown = [this](const WindowFacts& window) { windowShown(window); };
    parts.windows->onActiveProcessChanged = [this](pid_t process) {
        activeProcessChanged(process);
    };
}

void InstanceFeed::post(platform::Block block)
{
    parts.queues.asyncMain([guard = alive, block = std::move(block)] {
        if (*guard) {
            block();
        }
    });
}

std::vector<InstanceFeed::Sighting>
InstanceFeed::sightingsOf(const std::vector<proc::ProcessFacts>& all) const
{
    std::vector<Sighting> result;
    for (const proc::ProcessFacts& facts : all) {
        KnownApplicationPtr application = parts.applications.ofProcess(facts);
        if (application != nullptr) {
            result.push_back({facts, std::move(application), parts.processes.ancestorsOf(facts.pid)}
            );
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
        const auto ready = std::exchange(onReady, nullptr);
        ready();
    }
}

void InstanceFeed::take(const Sighting& sighting)
{
    if (listening) {
        parts.tracker.processStarted(sighting.facts, sighting.application, sighting.ancestors);
    } else {
        parts.tracker.alreadyRunning(sighting.facts, sighting.application, sighting.ancestors);
    }
}

void InstanceFeed::windowShown(const WindowFacts& window)
{
    const pid_t pid = window.processIdentifier;
    if (pid <= 0 || pid == getpid()) {
        return;
    }
    const InstancePtr instance = instanceOfWindow(window, parts.processes.ancestorsOf(pid));
    if (instance != nullptr) {
        parts.tracker.windowShown(instance);
    }
}

/// A window tells who it belongs to only when its process did not: a start that no exec announced
/// is late then, but certain.
InstancePtr
InstanceFeed::instanceOfWindow(const WindowFacts& window, const std::vector<pid_t>& ancestors)
{
    const pid_t pid = window.processIdentifier;
    InstancePtr instance = parts.tracker.instanceOf(pid);
    if (instance != nullptr) {
        return instance;
    }
    instance = parts.tracker.instanceOf(pid, ancestors);
    const KnownApplicationPtr application = parts.applications.ofWindow(window);
    const bool another =
        application != nullptr &&
        (instance == nullptr || instance->application->identifier != application->identifier);
    const std::optional<proc::ProcessFacts> facts =
        another ? parts.processes.factsOf(pid) : std::nullopt;
    if (!facts.has_value()) {
        return instance;
    }
    take({*facts, application, ancestors});
    return parts.tracker.instanceOf(pid);
}

void InstanceFeed::activeProcessChanged(pid_t process) const
{
    if (onActiveChanged) {
        onActiveChanged(
            process == 0 ? nullptr
                         : parts.tracker.instanceOf(process, parts.processes.ancestorsOf(process))
        );
    }
}

/// What executes the same file and is the same application, or was forked off and so has the same
/// arguments: an interpreter may execute anything.
std::vector<proc::ProcessFacts> InstanceFeed::survivorsOf(const Instance& instance) const
{
    std::vector<proc::ProcessFacts> result = parts.processes.executing(instance.leader.executable);
    std::erase_if(result, [&](const proc::ProcessFacts& facts) {
        const KnownApplicationPtr application = parts.applications.ofProcess(facts);
        const bool same =
            application != nullptr && application->identifier == instance.application->identifier;
        return !same && facts.arguments != instance.leader.arguments;
    });
    return result;
}

void InstanceFeed::watch(pid_t pid, std::uint64_t startTime)
{
    {
        const std::lock_guard lock(mutex);
        watched.insert(pid);
    }
    parts.processes.watchExit(pid, startTime);
}

bool InstanceFeed::isWatched(pid_t pid)
{
    const std::lock_guard lock(mutex);
    return watched.contains(pid);
}

} // namespace workspace
