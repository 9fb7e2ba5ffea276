// Turns the desktop's reports about applications that start and end into callbacks with records.
// Ordinary applications come from the workspace's notifications, accessory and background ones from
// the changes of its list, so that none is reported twice. Main thread only; callbacks run inside
// the platform's delivery.
#pragma once

#include "applications/ApplicationEntity.h"
#include "applications/SystemApplicationsService.h"
#include "platform/Workspace.h"

#include <functional>
#include <optional>
#include <string>

namespace applications {

class ApplicationsMonitorService
{
public:
    ApplicationsMonitorService() = default;
    ApplicationsMonitorService(const ApplicationsMonitorService&) = delete;
    ApplicationsMonitorService& operator=(const ApplicationsMonitorService&) = delete;
    ApplicationsMonitorService(ApplicationsMonitorService&&) = delete;
    ApplicationsMonitorService& operator=(ApplicationsMonitorService&&) = delete;
    ~ApplicationsMonitorService() = default;

    std::function<void(const ApplicationEntityPtr&)> onApplicationWillStart;
    std::function<void(const ApplicationEntityPtr&)> onApplicationDidStart;
    std::function<void(const ApplicationEntityPtr&)> onApplicationTerminated;
    std::function<void()> onHelperTerminated;

    /// Registers the observers. Called twice, every event is reported twice.
    void startService();

    /// Takes all observers back; the owner calls it before it lets go of a started service.
    void stopService();

    void applicationWillStart(const platform::WorkspaceNotification& notification) const;
    void applicationDidStart(const platform::WorkspaceNotification& notification) const;
    void applicationTerminated(const platform::WorkspaceNotification& notification) const;
    void observeValue(
        const std::string& keyPath, const std::optional<platform::KeyValueChange>& change
    ) const;

private:
    /// Part of the service; what is observed brings all that the observers need.
    SystemApplicationsService systemApplicationsService;
};

} // namespace applications
