#include "applications/ApplicationsMonitorService.h"

#include "app/Constants.h"
#include "platform/Call.h"
#include "platform/Fatal.h"
#include "platform/Platform.h"

#include <array>
#include <cstdint>
#include <utility>
#include <variant>
#include <vector>

namespace applications {

namespace {

using platform::WorkspaceNotificationName;

constexpr std::array LAUNCH_AND_TERMINATION{
    WorkspaceNotificationName::WillLaunchApplication,
    WorkspaceNotificationName::DidLaunchApplication,
    WorkspaceNotificationName::DidTerminateApplication,
};

/// The entry of the user information, or nullptr when it is missing or of another type.
template <typename Value>
const Value* entry(const platform::WorkspaceNotification& notification, const char* key)
{
    if (!notification.userInfo.has_value()) {
        return nullptr;
    }
    const auto found = notification.userInfo->find(key);
    return found == notification.userInfo->end() ? nullptr : std::get_if<Value>(&found->second);
}

/// The application that a launch notification is about; empty when it is not known (yet).
ApplicationEntityPtr launchedApplication(const platform::WorkspaceNotification& notification)
{
    const auto* identifier =
        entry<std::int64_t>(notification, platform::APPLICATION_PROCESS_IDENTIFIER_KEY);
    if (identifier == nullptr) {
        return nullptr;
    }
    if (!std::in_range<std::int32_t>(*identifier)) {
        platform::fatal("a process identifier is out of range");
    }
    const std::optional<platform::RunningApplication> application =
        platform::current().workspace.runningApplication(static_cast<std::int32_t>(*identifier));
    return application.has_value() ? ApplicationEntity::fromRunningApplication(*application)
                                   : nullptr;
}

/// The first of the changed applications, where it is one that no notification reports.
ApplicationEntityPtr
changedApplication(const std::optional<std::vector<platform::RunningApplication>>& applications)
{
    if (!applications.has_value() || applications->empty() ||
        applications->front().activationPolicy == platform::ActivationPolicy::Regular) {
        return nullptr;
    }
    return ApplicationEntity::fromRunningApplication(applications->front());
}

} // namespace

void ApplicationsMonitorService::startService()
{
    platform::Workspace& workspace = platform::current().workspace;
    workspace.addKeyPathObserver(
        this,
        platform::RUNNING_APPLICATIONS_KEY_PATH,
        platform::KEY_VALUE_OBSERVING_OPTION_NEW | platform::KEY_VALUE_OBSERVING_OPTION_OLD,
        [this](const std::string& keyPath, const std::optional<platform::KeyValueChange>& change) {
            observeValue(keyPath, change);
        }
    );
    workspace.addObserver(
        this,
        WorkspaceNotificationName::WillLaunchApplication,
        [this](const auto& notification) { applicationWillStart(notification); }
    );
    workspace.addObserver(
        this,
        WorkspaceNotificationName::DidLaunchApplication,
        [this](const auto& notification) { applicationDidStart(notification); }
    );
    workspace.addObserver(
        this,
        WorkspaceNotificationName::DidTerminateApplication,
        [this](const auto& notification) { applicationTerminated(notification); }
    );
}

void ApplicationsMonitorService::stopService()
{
    platform::Workspace& workspace = platform::current().workspace;
    workspace.removeKeyPathObserver(this, platform::RUNNING_APPLICATIONS_KEY_PATH);
    for (const WorkspaceNotificationName name : LAUNCH_AND_TERMINATION) {
        workspace.removeObserver(this, name);
    }
    workspace.removeObserver(this);
}

void ApplicationsMonitorService::applicationWillStart(
    const platform::WorkspaceNotification& notification
) const
{
    const ApplicationEntityPtr application = launchedApplication(notification);
    if (application != nullptr) {
        platform::call(onApplicationWillStart, application);
    }
}

void ApplicationsMonitorService::applicationDidStart(
    const platform::WorkspaceNotification& notification
) const
{
    const ApplicationEntityPtr application = launchedApplication(notification);
    if (application != nullptr) {
        platform::call(onApplicationDidStart, application);
    }
}

void ApplicationsMonitorService::applicationTerminated(
    const platform::WorkspaceNotification& notification
) const
{
    const auto* application =
        entry<platform::RunningApplication>(notification, platform::WORKSPACE_APPLICATION_KEY);
    if (application != nullptr) {
        platform::call(
            onApplicationTerminated, ApplicationEntity::fromRunningApplication(*application)
        );
    }
}

void ApplicationsMonitorService::observeValue(
    const std::string& keyPath, const std::optional<platform::KeyValueChange>& change
) const
{
    if (keyPath != platform::RUNNING_APPLICATIONS_KEY_PATH || !change.has_value()) {
        return;
    }
    const ApplicationEntityPtr started = changedApplication(change->newKey);
    if (started != nullptr) {
        platform::call(onApplicationWillStart, started);
        platform::call(onApplicationDidStart, started);
    }
    const ApplicationEntityPtr ended = changedApplication(change->oldKey);
    if (ended == nullptr) {
        return;
    }
    if (ended->bundleIdentifier == app::Constants::HELPER_BUNDLE_ID) {
        platform::call(onHelperTerminated);
    }
    platform::call(onApplicationTerminated, ended);
}

} // namespace applications
