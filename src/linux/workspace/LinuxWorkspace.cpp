#include "linux/workspace/LinuxWorkspace.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace workspace {

namespace {

using platform::RunningApplication;
using platform::WorkspaceNotificationName;

constexpr double RETRY_SECONDS = 60.0;

} // namespace

LinuxWorkspace::LinuxWorkspace(Parts parts)
    : parts(std::move(parts)),
      records(this->parts.loadIcon),
      feed({
          .tracker = tracker,
          .processes = this->parts.processes,
          .applications = this->parts.applications,
          .windows = this->parts.windows,
          .queues = this->parts.queues,
          .session = this->parts.session,
      }),
      launcher(this->parts.report)
{
    tracker.onStarted = [this](const Instance& instance) { announcements.started(instance); };
    tracker.onStartedAgain = [this](const Instance& instance) {
        announcements.startedAgain(instance);
    };
    tracker.onWindowShown = [this](const Instance& instance) {
        announcements.windowShown(instance);
    };
    tracker.onEnded = [this](const Instance& instance) { announcements.ended(instance); };
    feed.onActiveChanged = [this](const InstancePtr& instance) {
        announcements.activeChanged(instance);
    };
    launcher.onStarted = [this](const proc::ProcessFacts& facts) { feed.startedByUs(facts); };
}

void LinuxWorkspace::start(std::function<void()> ready)
{
    feed.start(std::move(ready));
}

std::vector<RunningApplication> LinuxWorkspace::runningApplications()
{
    std::vector<RunningApplication> result;
    for (const InstancePtr& instance : tracker.instances().all()) {
        result.push_back(records.of(*instance));
    }
    return result;
}

std::optional<RunningApplication> LinuxWorkspace::runningApplication(std::int32_t processIdentifier)
{
    const Instance* subject = announcements.subject();
    if (subject != nullptr && subject->leader.pid == processIdentifier) {
        return records.of(*subject);
    }
    const InstancePtr instance = tracker.instances().ofProcess(processIdentifier);
    return instance != nullptr && instance->leader.pid == processIdentifier
               ? std::optional(records.of(*instance))
               : std::nullopt;
}

std::vector<RunningApplication>
LinuxWorkspace::runningApplications(const std::string& bundleIdentifier)
{
    std::vector<RunningApplication> result;
    for (const InstancePtr& instance : tracker.instances().all()) {
        if (answersTo(instance->application->identifier, bundleIdentifier)) {
            result.push_back(records.of(*instance));
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
    return records.icon(isItsBundle ? application->iconName : std::string());
}

bool LinuxWorkspace::activate(const RunningApplication& application, unsigned /*options*/)
{
    if (parts.windows == nullptr) {
        return false;
    }
    const pid_t process = application.processIdentifier;
    InstancePtr instance =
        tracker.instances().ledBy(process, application.bundleIdentifier.value_or(""));
    if (instance == nullptr) {
        instance = tracker.instances().ofProcess(process);
    }
    // A process may show the windows of other applications, too.
    if (instance != nullptr && parts.windows->bringForward(instance->windows)) {
        return true;
    }
    if (parts.windows->bringForward(process)) {
        return true;
    }
    return instance != nullptr &&
           std::any_of(
               instance->processes.begin(),
               instance->processes.end(),
               [this](const auto& entry) { return parts.windows->bringForward(entry.first); }
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
    const std::vector<InstancePtr>& instances = tracker.instances().all();
    const bool runs =
        std::any_of(instances.begin(), instances.end(), [&](const InstancePtr& instance) {
            return instance->leader.executable == executable;
        });
    if (runs) {
        return true;
    }
    const BundleLauncher::Outcome outcome = launcher.launch(path, configuration);
    if (outcome == BundleLauncher::Outcome::TooOften && retries.insert(path).second) {
        const platform::Block again = [=, this] {
            retries.erase(path);
            launchApplication(path, options, configuration);
        };
        parts.timers.scheduleTimer(RETRY_SECONDS, false, lifetime.guard(again));
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
