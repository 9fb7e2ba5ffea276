#include "locking/CurrentMonitoredApplicationService.h"

#include "storage/KeyConstants.h"

namespace locking {

std::optional<std::string> CurrentMonitoredApplicationService::currentMonitoredApplication()
{
    std::string bundleIdentifier = storage.getValue(storage::KeyConstants::CURRENT_BLOCKED_APP_KEY);
    if (bundleIdentifier.empty()) {
        return std::nullopt;
    }
    return bundleIdentifier;
}

void CurrentMonitoredApplicationService::markMinitoredApplication(
    const std::string& bundleIdentifier
)
{
    storage.setValue(storage::KeyConstants::CURRENT_BLOCKED_APP_KEY, bundleIdentifier);
}

void CurrentMonitoredApplicationService::unmarkMinitoredApplication()
{
    storage.removeValue(storage::KeyConstants::CURRENT_BLOCKED_APP_KEY);
}

} // namespace locking
