#include "locking/window/ThisAgent.h"

#include "app/Constants.h"

#include <variant>

namespace locking {

bool concernsThisAgent(const platform::WorkspaceNotification& notification)
{
    if (!notification.userInfo.has_value()) {
        return false;
    }
    const auto entry = notification.userInfo->find(platform::WORKSPACE_APPLICATION_KEY);
    if (entry == notification.userInfo->end()) {
        return false;
    }
    const auto* application = std::get_if<platform::RunningApplication>(&entry->second);
    return application != nullptr && application->bundleIdentifier == app::Constants::BUNDLE_ID();
}

} // namespace locking
