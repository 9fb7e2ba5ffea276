// The desktop's view of applications on Linux: what processes do, as the process source tells, what
// windows there are, as the window system tells, and what is installed, as the index tells, joined
// into one list of running applications. Main thread, except what only asks the index.
// `InstanceFeed` brings the facts, the tracker concludes, `Announcements` tells the observers; here
// are the port's own answers.
#pragma once

#include "linux/workspace/Announcements.h"
#include "linux/workspace/ApplicationRecords.h"
#include "linux/workspace/BundleLauncher.h"
#include "linux/workspace/InstanceFeed.h"
#include "linux/workspace/InstanceTracker.h"
#include "linux/workspace/Observers.h"
#include "linux/workspace/OwnPrograms.h"
#include "linux/workspace/ProcessSource.h"
#include "platform/DispatchQueues.h"
#include "platform/Lifetime.h"
#include "platform/Report.h"
#include "platform/Timers.h"
#include "platform/Workspace.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace workspace {

class LinuxWorkspace final : public platform::Workspace
{
public:
    struct Parts
    {
        ProcessSource& processes;
        OwnPrograms& applications;
        WindowSystem* windows = nullptr; // none: applications start, but never show a window
        platform::DispatchQueues& queues;
        platform::Timers& timers;
        LoadIcon loadIcon;
        std::function<bool(const std::string& url)> openUrl;
        platform::Report report;
        GraphicalSession session{}; // only processes that may belong to it count
    };

    /// Everything in `parts` must outlive this. Listens from `start` on.
    explicit LinuxWorkspace(Parts parts);
    LinuxWorkspace(const LinuxWorkspace&) = delete;
    LinuxWorkspace& operator=(const LinuxWorkspace&) = delete;
    LinuxWorkspace(LinuxWorkspace&&) = delete;
    LinuxWorkspace& operator=(LinuxWorkspace&&) = delete;
    ~LinuxWorkspace() override = default;

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
    Parts parts;
    InstanceTracker tracker;
    ApplicationRecords records;
    Observers observers;
    Announcements announcements{records, observers};
    InstanceFeed feed;
    BundleLauncher launcher;
    std::set<std::string> retries; // paths of what is to be launched once it may be again
    platform::Lifetime lifetime;
};

} // namespace workspace
