#include "linux/workspace/Announcements.h"

#include <cstdint>
#include <utility>

namespace workspace {

namespace {

using platform::RunningApplication;
using platform::WorkspaceNotificationName;

bool isSame(
    const std::optional<RunningApplication>& one, const std::optional<RunningApplication>& other
)
{
    return one.has_value() == other.has_value() &&
           (!one.has_value() || (one->processIdentifier == other->processIdentifier &&
                                 one->bundleIdentifier == other->bundleIdentifier));
}

} // namespace

Announcements::Announcements(const ApplicationRecords& records, Observers& observers)
    : records(records),
      observers(observers)
{
}

void Announcements::started(const Instance& instance)
{
    observers.notifyInserted(records.of(instance));
    if (!instance.expected) {
        notifyLaunch(WorkspaceNotificationName::WillLaunchApplication, instance);
    }
}

void Announcements::startedAgain(const Instance& instance)
{
    notifyLaunch(WorkspaceNotificationName::WillLaunchApplication, instance);
}

void Announcements::windowShown(const Instance& instance)
{
    notifyLaunch(WorkspaceNotificationName::DidLaunchApplication, instance);
}

void Announcements::ended(const Instance& instance)
{
    const RunningApplication application = records.of(instance);
    observers.notifyRemoved(application);
    if (application.activationPolicy == platform::ActivationPolicy::Regular) {
        notifyApplication(WorkspaceNotificationName::DidTerminateApplication, application);
    }
}

void Announcements::activeChanged(const InstancePtr& instance)
{
    const std::optional<RunningApplication> next =
        instance == nullptr ? std::nullopt : std::optional(records.of(*instance));
    if (isSame(active, next)) {
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

void Announcements::notifyLaunch(WorkspaceNotificationName name, const Instance& instance)
{
    const RunningApplication application = records.of(instance);
    if (application.activationPolicy != platform::ActivationPolicy::Regular) {
        return;
    }
    const Instance* before = std::exchange(announced, &instance);
    observers.notify(
        {name,
         platform::UserInfo{
             {platform::APPLICATION_PROCESS_IDENTIFIER_KEY,
              static_cast<std::int64_t>(application.processIdentifier)},
             {platform::WORKSPACE_APPLICATION_KEY, application},
         }}
    );
    announced = before;
}

void Announcements::notifyApplication(
    WorkspaceNotificationName name, const RunningApplication& application
)
{
    observers.notify({name, platform::UserInfo{{platform::WORKSPACE_APPLICATION_KEY, application}}}
    );
}

} // namespace workspace
