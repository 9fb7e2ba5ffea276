#include "linux/workspace/InstanceFeed.h"

#include <optional>
#include <utility>

#include <unistd.h>

namespace workspace {

namespace {

bool isShell(const std::string& executable)
{
    const std::string name = executable.substr(executable.rfind('/') + 1);
    return name == "sh" || name == "dash" || name == "bash" || name == "busybox";
}

} // namespace

InstanceFeed::InstanceFeed(Parts parts) : parts(std::move(parts))
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
    tracker.shareProgram = [this](const std::string& identifier, const std::string& other) {
        return parts.applications.shareProgram(identifier, other);
    };
    tracker.survivorsOf = [this](const Instance& instance) { return survivorsOf(instance); };
}

void InstanceFeed::wireProcesses()
{
    parts.processes.isOfInterest = [this](pid_t pid, const std::string& executable) {
        return isOfInterest(pid, executable);
    };
    parts.processes.onExec = [this](const proc::ProcessFacts& facts) { executed(facts); };
    parts.processes.onExit = [this](pid_t pid, std::uint64_t startTime) {
        {
            const std::lock_guard lock(mutex);
            watched.erase(pid);
            scripts.erase(pid);
        }
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
    if (isWatched(facts.pid)) {
        post([this, facts] { parts.tracker.processBecame(facts); });
    } else if (isScript(facts.parent)) {
        post([this, facts] { parts.tracker.childStarted(facts); });
    }
}

/// Nothing for a process of another session.
std::optional<Sighting>
InstanceFeed::sightingOf(const proc::ProcessFacts& facts, KnownApplicationPtr application) const
{
    const proc::ProcessEnvironment environment = parts.processes.environmentOf(facts.pid);
    std::vector<pid_t> ancestors = parts.processes.ancestorsOf(facts.pid);
    const auto environmentsOfAncestors = [&] {
        std::vector<proc::ProcessEnvironment> result;
        for (const pid_t ancestor : ancestors) {
            result.push_back(parts.processes.environmentOf(ancestor));
        }
        return result;
    };
    if (parts.session.isForeign(environment, facts.arguments, environmentsOfAncestors)) {
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
    startLater({facts, parts.applications.ofProcess(facts), {}, false, false});
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
    parts.queues.asyncMain([guard = alive, block = std::move(block)] {
        if (*guard) {
            block();
        }
    });
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
        const auto ready = std::exchange(onReady, nullptr);
        ready();
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
    const InstancePtr instance = pid > 0 ? instanceOfWindow(window) : instanceOfStray(window);
    if (instance == nullptr) {
        return;
    }
    if (listening) {
        parts.tracker.windowShown(instance, window.window);
    } else {
        InstanceTracker::windowThere(instance, window.window);
    }
}

/// A window tells who it belongs to where its process does not, or where that may show windows of
/// several: a start that no exec announced is late then, but certain.
InstancePtr InstanceFeed::instanceOfWindow(const WindowFacts& window)
{
    const pid_t pid = window.processIdentifier;
    InstancePtr host = parts.tracker.instanceOf(pid, parts.processes.ancestorsOf(pid));
    const KnownApplicationPtr application = applicationOf(window, host);
    if (application == nullptr) {
        return host;
    }
    if (host != nullptr && host->application->identifier == application->identifier) {
        learnFrom(pid, *application);
        return host;
    }
    InstancePtr own = parts.tracker.instanceWith(pid, application->identifier);
    return own != nullptr ? own : otherInstanceOfWindow(window, application, std::move(host));
}

/// By what the window says; where that is nothing, by what its process is a copy of.
KnownApplicationPtr
InstanceFeed::applicationOf(const WindowFacts& window, const InstancePtr& host) const
{
    const pid_t pid = window.processIdentifier;
    const KnownApplicationPtr application = parts.applications.ofWindow(window);
    if (application != nullptr || (host != nullptr && host->processes.contains(pid))) {
        return application;
    }
    const std::optional<proc::ProcessFacts> facts = parts.processes.factsOf(pid);
    return facts ? parts.applications.ofCopy(*facts) : nullptr;
}

/// A window whose process is nobody's here, such as that of a program on another machine: what it
/// says about itself is all there is.
InstancePtr InstanceFeed::instanceOfStray(const WindowFacts& window)
{
    const KnownApplicationPtr application = parts.applications.ofWindow(window);
    if (application == nullptr) {
        return nullptr;
    }
    InstancePtr known = parts.tracker.instanceWithoutProcess(application->identifier);
    if (known != nullptr) {
        return known;
    }
    const Sighting sighting{{}, application, {}, false, false};
    return listening ? parts.tracker.startedByWindow(sighting)
                     : parts.tracker.runningByWindow(sighting);
}

InstancePtr InstanceFeed::otherInstanceOfWindow(
    const WindowFacts& window, const KnownApplicationPtr& application, InstancePtr host
)
{
    const pid_t pid = window.processIdentifier;
    const std::optional<proc::ProcessFacts> facts =
        mayShow(host, application, pid) ? parts.processes.factsOf(pid) : std::nullopt;
    if (!facts) {
        return host;
    }
    const Sighting sighting{*facts, application, parts.processes.ancestorsOf(pid), false, false};
    learnFrom(pid, *application);
    return listening ? parts.tracker.startedByWindow(sighting)
                     : parts.tracker.runningByWindow(sighting);
}

/// What a process executes counts for more than what its windows say, unless that is several
/// applications.
bool InstanceFeed::mayShow(
    const InstancePtr& host, const KnownApplicationPtr& application, pid_t pid
) const
{
    return host == nullptr || !host->processes.contains(pid) ||
           parts.applications.shareProgram(host->application->identifier, application->identifier);
}

void InstanceFeed::learnFrom(pid_t pid, const KnownApplication& application) const
{
    const std::optional<proc::ProcessFacts> facts = parts.processes.factsOf(pid);
    if (facts && parts.applications.ofProcess(*facts) == nullptr) {
        parts.applications.learn(*facts, application.identifier);
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
    if (!onActiveChanged) {
        return;
    }
    InstancePtr instance = parts.tracker.instanceShowing(window);
    if (instance == nullptr && process != 0) {
        instance = parts.tracker.instanceOf(process, parts.processes.ancestorsOf(process));
    }
    onActiveChanged(instance);
}

std::vector<proc::ProcessFacts> InstanceFeed::survivorsOf(const Instance& instance) const
{
    std::vector<proc::ProcessFacts> result = parts.processes.executing(instance.leader.executable);
    std::erase_if(result, [&](const proc::ProcessFacts& facts) {
        return !isSame(facts, instance) || isForkOfAnother(facts, instance);
    });
    return result;
}

/// Of what executes the same file: the same application, or forked off and so with the same
/// arguments. An interpreter may execute anything.
bool InstanceFeed::isSame(const proc::ProcessFacts& facts, const Instance& instance) const
{
    const KnownApplicationPtr application = parts.applications.ofProcess(facts);
    return facts.arguments == instance.leader.arguments ||
           (application != nullptr && application->identifier == instance.application->identifier);
}

/// As the living instance that a second start handed over to may do just then, to execute something
/// else.
bool InstanceFeed::isForkOfAnother(const proc::ProcessFacts& facts, const Instance& instance) const
{
    const InstancePtr owner =
        parts.tracker.instanceOf(facts.pid, parts.processes.ancestorsOf(facts.pid));
    return owner != nullptr && owner.get() != &instance &&
           owner->application->identifier == instance.application->identifier;
}

void InstanceFeed::watch(pid_t pid, std::uint64_t startTime)
{
    const InstancePtr instance = parts.tracker.instanceOf(pid);
    const bool script =
        instance != nullptr && instance->leader.pid == pid && isShell(instance->leader.executable);
    {
        const std::lock_guard lock(mutex);
        watched.insert(pid);
        if (script) {
            scripts.insert(pid);
        }
    }
    parts.processes.watchExit(pid, startTime);
}

/// A shell that leads an instance does the application's work by its children.
bool InstanceFeed::isOfInterest(pid_t pid, const std::string& executable)
{
    if (parts.applications.mayBeApplication(executable)) {
        return true;
    }
    const std::lock_guard lock(mutex);
    return !scripts.empty() || watched.contains(pid);
}

bool InstanceFeed::isScript(pid_t pid)
{
    const std::lock_guard lock(mutex);
    return scripts.contains(pid);
}

bool InstanceFeed::isWatched(pid_t pid)
{
    const std::lock_guard lock(mutex);
    return watched.contains(pid);
}

} // namespace workspace
