// The desktop's view of applications on Linux: what processes do, as the process source tells, what
// windows there are, as the window system tells, and what is installed, as the index tells, joined
// into one list of running applications. Main thread; the process source's thread only looks up who
// a process is.
#pragma once

#include "linux/workspace/BundleLauncher.h"
#include "linux/workspace/InstanceTracker.h"
#include "linux/workspace/Observers.h"
#include "linux/workspace/OwnPrograms.h"
#include "linux/workspace/ProcessSource.h"
#include "platform/DispatchQueues.h"
#include "platform/Timers.h"
#include "platform/Workspace.h"

#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace workspace {

class LinuxWorkspace final : public platform::Workspace
{
public:
    /// Any thread may call it; the icon for a theme name or an absolute path, never empty.
    using LoadIcon = std::function<platform::IconHandle(const std::string& nameOrPath)>;

    struct Parts
    {
        ProcessSource& processes;
        const OwnPrograms& applications;
        WindowSystem* windows = nullptr; // none: applications start, but never show a window
        platform::DispatchQueues& queues;
        platform::Timers& timers;
        LoadIcon loadIcon;
        std::function<bool(const std::string& url)> openUrl;
        proc::Report report;
    };

    /// Everything in `parts` must outlive this. Listens from `start` on.
    explicit LinuxWorkspace(Parts parts);
    LinuxWorkspace(const LinuxWorkspace&) = delete;
    LinuxWorkspace& operator=(const LinuxWorkspace&) = delete;
    LinuxWorkspace(LinuxWorkspace&&) = delete;
    LinuxWorkspace& operator=(LinuxWorkspace&&) = delete;
    ~LinuxWorkspace() override;

    /// Calls `ready` once the applications that run already are in the list.
    void start(std::function<void()> ready);

    std::vector<platform::RunningApplication> runningApplications() override;
    std::optional<platform::RunningApplication> runningApplication(std::int32_t processIdentifier
    ) override;
    std::vector<platform::RunningApplication>
    runningApplications(const std::string& bundleIdentifier) override;
    bool answersTo(const std::string& bundleIdentifier, const std::string& wanted) override;
    std::optional<std::string> absolutePathForAppBundle(const std::string& bundleIdentifier
    ) override;
    platform::IconHandle iconForFile(const std::string& path) override;
    bool activate(const platform::RunningApplication& application, unsigned options) override;
    bool openUrl(const std::string& url) override;
    bool launchApplication(
        const std::string& path,
        unsigned options,
        const platform::LaunchConfiguration& configuration
    ) override;

    void addObserver(
        const void* observer,
        platform::WorkspaceNotificationName name,
        platform::WorkspaceNotificationHandler handler
    ) override;
    void removeObserver(const void* observer, platform::WorkspaceNotificationName name) override;
    void removeObserver(const void* observer) override;
    void addKeyPathObserver(
        const void* observer,
        const std::string& keyPath,
        unsigned options,
        platform::KeyValueHandler handler
    ) override;
    void removeKeyPathObserver(const void* observer, const std::string& keyPath) override;

private:
    struct Sighting
    {
        proc::ProcessFacts facts;
        KnownApplicationPtr application;
        std::vector<pid_t> ancestors;
    };

    void wireTracker();
    void wireLauncher();
    void wireProcesses();
    void wireWindows();
    void startLater(Sighting sighting);
    void becomeLater(const proc::ProcessFacts& facts);
    void post(platform::Block block);
    platform::Block unlessGone(platform::Block block) const;
    std::vector<Sighting> sightingsOf(const std::vector<proc::ProcessFacts>& all) const;
    void takeSnapshot(const std::vector<Sighting>& sightings);
    void windowShown(const WindowFacts& window);
    InstancePtr instanceOfWindow(const WindowFacts& window, const std::vector<pid_t>& ancestors);
    void activeProcessChanged(pid_t process);
    std::vector<proc::ProcessFacts> survivorsOf(const Instance& instance) const;
    void watch(pid_t pid, std::uint64_t startTime);
    bool isWatched(pid_t pid);
    platform::RunningApplication record(const Instance& instance) const;
    void notifyLaunch(platform::WorkspaceNotificationName name, const Instance& instance);
    void notifyApplication(
        platform::WorkspaceNotificationName name, const platform::RunningApplication& application
    );

    Parts parts;
    InstanceTracker tracker;
    Observers observers;
    BundleLauncher launcher;
    std::function<void()> onReady;
    bool listening = false; // what ran before is in the list; what comes now is news
    std::optional<platform::RunningApplication> active;
    std::mutex mutex;
    std::set<pid_t> watched; // guarded by the mutex
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);
};

} // namespace workspace
