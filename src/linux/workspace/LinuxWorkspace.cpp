#include "linux/workspace/LinuxWorkspace.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include <unistd.h>

namespace workspace {

namespace {

using platform::RunningApplication;
using platform::WorkspaceNotificationName;

constexpr double RETRY_SECONDS = 60.0;

platform::ActivationPolicy policyOf(const Instance& instance)
{
    return instance.application->shown || instance.windowShown
               ? platform::ActivationPolicy::Regular
               : platform::ActivationPolicy::Accessory;
}

} // namespace

LinuxWorkspace::LinuxWorkspace(Parts parts) : parts(std::move(parts)), launcher(this->parts.report)
{
    wireTracker();
    wireLauncher();
    wireProcesses();
    wireWindows();
}

LinuxWorkspace::~LinuxWorkspace()
{
    *alive = false;
}

void LinuxWorkspace::start(std::function<void()> ready)
{
    onReady = std::move(ready);
    parts.processes.watchExecutables(parts.applications.executables());
    parts.processes.start();
}

void LinuxWorkspace::wireTracker()
{
    tracker.onWatchWanted = [this](pid_t pid, std::uint64_t startTime) { watch(pid, startTime); };
    tracker.isAlive = [this](pid_t pid, std::uint64_t startTime) {
        return parts.processes.alive(pid, startTime);
    };
    tracker.survivorsOf = [this](const Instance& instance) { return survivorsOf(instance); };
    tracker.onStarted = [this](const Instance& instance) {
        observers.notifyInserted(record(instance));
        notifyLaunch(WorkspaceNotificationName::WillLaunchApplication, instance);
    };
    tracker.onWindowShown = [this](const Instance& instance) {
        notifyLaunch(WorkspaceNotificationName::DidLaunchApplication, instance);
    };
    tracker.onEnded = [this](const Instance& instance) {
        const RunningApplication application = record(instance);
        observers.notifyRemoved(application);
        if (application.activationPolicy == platform::ActivationPolicy::Regular) {
            notifyApplication(WorkspaceNotificationName::DidTerminateApplication, application);
        }
    };
}

void LinuxWorkspace::wireLauncher()
{
    launcher.onStarted = [this](const proc::ProcessFacts& facts) {
        startLater({facts, parts.applications.ofProcess(facts), {}});
    };
}

void LinuxWorkspace::startLater(Sighting sighting)
{
    if (sighting.application != nullptr) {
        post([this, sighting = std::move(sighting)] {
            tracker.processStarted(sighting.facts, sighting.application, sighting.ancestors);
        });
    }
}

/// The look-up of who a process is happens on the source's thread: most processes are nobody's, and
/// the main thread never hears of them.
void LinuxWorkspace::wireProcesses()
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
        post([this, pid, startTime] { tracker.processEnded(pid, startTime); });
    };
    parts.processes.onSnapshot = [this](const std::vector<proc::ProcessFacts>& all) {
        post([this, sightings = sightingsOf(all)] { takeSnapshot(sightings); });
    };
}

void LinuxWorkspace::becomeLater(const proc::ProcessFacts& facts)
{
    post([this, facts] { tracker.processBecame(facts); });
}

void LinuxWorkspace::wireWindows()
{
    if (parts.windows == nullptr) {
        return;
    }
    parts.windows->onWindowShown = [this](const WindowFacts& window) { windowShown(window); };
    parts.windows->onActiveProcessChanged = [this](pid_t process) {
        activeProcessChanged(process);
    };
}

void LinuxWorkspace::post(platform::Block block)
{
    parts.queues.asyncMain(unlessGone(std::move(block)));
}

platform::Block LinuxWorkspace::unlessGone(platform::Block block) const
{
    return [guard = alive, block = std::move(block)] {
        if (*guard) {
            block();
        }
    };
}

std::vector<LinuxWorkspace::Sighting>
LinuxWorkspace::sightingsOf(const std::vector<proc::ProcessFacts>& all) const
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
void LinuxWorkspace::takeSnapshot(const std::vector<Sighting>& sightings)
{
    tracker.settle();
    for (const Sighting& sighting : sightings) {
        if (listening) {
            tracker.processStarted(sighting.facts, sighting.application, sighting.ancestors);
        } else {
            tracker.alreadyRunning(sighting.facts, sighting.application, sighting.ancestors);
        }
    }
    if (!listening && parts.windows != nullptr) {
        parts.windows->start();
    }
    if (!std::exchange(listening, true)) {
        const auto ready = std::exchange(onReady, nullptr);
        ready();
    }
}

void LinuxWorkspace::windowShown(const WindowFacts& window)
{
    const pid_t pid = window.processIdentifier;
    if (pid <= 0 || pid == getpid()) {
        return;
    }
    const InstancePtr instance = instanceOfWindow(window, parts.processes.ancestorsOf(pid));
    if (instance != nullptr) {
        tracker.windowShown(instance);
    }
}

/// A window tells who it belongs to only when its process did not: a start that no exec announced
/// is late then, but certain.
InstancePtr
LinuxWorkspace::instanceOfWindow(const WindowFacts& window, const std::vector<pid_t>& ancestors)
{
    const pid_t pid = window.processIdentifier;
    InstancePtr instance = tracker.instanceOf(pid);
    if (instance != nullptr) {
        return instance;
    }
    instance = tracker.instanceOf(pid, ancestors);
    const KnownApplicationPtr application = parts.applications.ofWindow(window);
    const bool another =
        application != nullptr &&
        (instance == nullptr || instance->application->identifier != application->identifier);
    const std::optional<proc::ProcessFacts> facts =
        another ? parts.processes.factsOf(pid) : std::nullopt;
    if (!facts.has_value()) {
        return instance;
    }
    if (listening) {
        tracker.processStarted(*facts, application, ancestors);
    } else {
        tracker.alreadyRunning(*facts, application, ancestors);
    }
    return tracker.instanceOf(pid);
}

void LinuxWorkspace::activeProcessChanged(pid_t process)
{
    const InstancePtr instance =
        process == 0 ? nullptr : tracker.instanceOf(process, parts.processes.ancestorsOf(process));
    const std::optional<RunningApplication> next =
        instance == nullptr ? std::nullopt : std::optional(record(*instance));
    const std::int32_t before = active.has_value() ? active->processIdentifier : 0;
    const std::int32_t after = next.has_value() ? next->processIdentifier : 0;
    if (before == after) {
        return;
    }
    const std::optional<RunningApplication> previous = std::exchange(active, next);
    if (previous.has_value()) {
        notifyApplication(WorkspaceNotificationName::DidDeactivateApplication, *previous);
    }
    if (next.has_value()) {
        notifyApplication(WorkspaceNotificationName::DidActivateApplication, *next);
    }
}

/// What executes the same file and is the same application, or was forked off and so has the same
/// arguments: an interpreter may execute anything.
std::vector<proc::ProcessFacts> LinuxWorkspace::survivorsOf(const Instance& instance) const
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

void LinuxWorkspace::watch(pid_t pid, std::uint64_t startTime)
{
    {
        const std::lock_guard lock(mutex);
        watched.insert(pid);
    }
    parts.processes.watchExit(pid, startTime);
}

bool LinuxWorkspace::isWatched(pid_t pid)
{
    const std::lock_guard lock(mutex);
    return watched.contains(pid);
}

RunningApplication LinuxWorkspace::record(const Instance& instance) const
{
    const KnownApplication& application = *instance.application;
    return {
        .processIdentifier = instance.leader.pid,
        .bundleIdentifier = application.identifier,
        .localizedName = application.name,
        .executableUrl = instance.leader.executable,
        .bundleUrl = application.bundlePath,
        .activationPolicy = policyOf(instance),
        .icon = parts.loadIcon(application.iconName),
    };
}

/// Applications without a presence of their own are only ever seen to change the list.
void LinuxWorkspace::notifyLaunch(WorkspaceNotificationName name, const Instance& instance)
{
    const RunningApplication application = record(instance);
    if (application.activationPolicy != platform::ActivationPolicy::Regular) {
        return;
    }
    observers.notify(
        {name,
         platform::UserInfo{
             {platform::APPLICATION_PROCESS_IDENTIFIER_KEY,
              static_cast<std::int64_t>(application.processIdentifier)},
             {platform::WORKSPACE_APPLICATION_KEY, application},
         }}
    );
}

void LinuxWorkspace::notifyApplication(
    WorkspaceNotificationName name, const RunningApplication& application
)
{
    observers.notify({name, platform::UserInfo{{platform::WORKSPACE_APPLICATION_KEY, application}}}
    );
}

std::vector<RunningApplication> LinuxWorkspace::runningApplications()
{
    std::vector<RunningApplication> result;
    for (const InstancePtr& instance : tracker.instances()) {
        result.push_back(record(*instance));
    }
    return result;
}

std::optional<RunningApplication> LinuxWorkspace::runningApplication(std::int32_t processIdentifier)
{
    const InstancePtr instance = tracker.instanceOf(processIdentifier);
    return instance != nullptr && instance->leader.pid == processIdentifier
               ? std::optional(record(*instance))
               : std::nullopt;
}

std::vector<RunningApplication>
LinuxWorkspace::runningApplications(const std::string& bundleIdentifier)
{
    std::vector<RunningApplication> result;
    for (const InstancePtr& instance : tracker.instances()) {
        if (answersTo(instance->application->identifier, bundleIdentifier)) {
            result.push_back(record(*instance));
        }
    }
    return result;
}

bool LinuxWorkspace::answersTo(const std::string& bundleIdentifier, const std::string& wanted)
{
    return bundleIdentifier == wanted || parts.applications.plays(bundleIdentifier, wanted);
}

std::optional<std::string>
LinuxWorkspace::absolutePathForAppBundle(const std::string& bundleIdentifier)
{
    const KnownApplicationPtr application = parts.applications.withIdentifier(bundleIdentifier);
    return application == nullptr ? std::nullopt : std::optional(application->bundlePath);
}

platform::IconHandle LinuxWorkspace::iconForFile(const std::string& path)
{
    const std::string identifier = std::filesystem::path(path).stem().string();
    const KnownApplicationPtr application = parts.applications.withIdentifier(identifier);
    const bool isItsBundle = application != nullptr && application->bundlePath == path;
    return parts.loadIcon(isItsBundle ? application->iconName : std::string());
}

bool LinuxWorkspace::activate(const RunningApplication& application, unsigned /*options*/)
{
    if (parts.windows == nullptr) {
        return false;
    }
    if (parts.windows->bringForward(application.processIdentifier)) {
        return true;
    }
    const InstancePtr instance = tracker.instanceOf(application.processIdentifier);
    return instance != nullptr &&
           std::any_of(
               instance->processes.begin(),
               instance->processes.end(),
               [this](const auto& process) { return parts.windows->bringForward(process.first); }
           );
}

bool LinuxWorkspace::openUrl(const std::string& url)
{
    return parts.openUrl && parts.openUrl(url);
}

bool LinuxWorkspace::launchApplication(
    const std::string& path, unsigned options, const platform::LaunchConfiguration& configuration
)
{
    const std::string executable = BundleLauncher::executableOf(path);
    const std::vector<InstancePtr>& instances = tracker.instances();
    const bool runs =
        std::any_of(instances.begin(), instances.end(), [&](const InstancePtr& instance) {
            return instance->leader.executable == executable;
        });
    if (runs) {
        return true;
    }
    const BundleLauncher::Outcome outcome = launcher.launch(path, configuration);
    if (outcome == BundleLauncher::Outcome::TooOften) {
        const platform::Block again = [=, this] {
            launchApplication(path, options, configuration);
        };
        parts.timers.scheduleTimer(RETRY_SECONDS, false, unlessGone(again));
    }
    return outcome == BundleLauncher::Outcome::Started;
}

void LinuxWorkspace::addObserver(
    const void* observer,
    WorkspaceNotificationName name,
    platform::WorkspaceNotificationHandler handler
)
{
    observers.add(observer, name, std::move(handler));
}

void LinuxWorkspace::removeObserver(const void* observer, WorkspaceNotificationName name)
{
    observers.remove(observer, name);
}

void LinuxWorkspace::removeObserver(const void* observer)
{
    observers.remove(observer);
}

void LinuxWorkspace::addKeyPathObserver(
    const void* observer,
    const std::string& keyPath,
    unsigned options,
    platform::KeyValueHandler handler
)
{
    observers.addKeyPath(observer, keyPath, options, std::move(handler));
}

void LinuxWorkspace::removeKeyPathObserver(const void* observer, const std::string& keyPath)
{
    observers.removeKeyPath(observer, keyPath);
}

} // namespace workspace
