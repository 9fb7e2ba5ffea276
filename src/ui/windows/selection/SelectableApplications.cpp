#include "ui/windows/selection/SelectableApplications.h"

#include "applications/ConfigurationConstants.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"
#include "storage/ConfigurationAndPreferencesService.h"

#include <algorithm>
#include <utility>

namespace ui {

SelectableApplications::SelectableApplications(
    const applications::SystemApplicationsService& service,
    storage::ConfigurationAndPreferencesService& settings,
    bool runningApplicationsOnly
)
    : service(service),
      runningApplicationsOnly(runningApplicationsOnly)
{
    if (runningApplicationsOnly) {
        running = service.runningNSApplications();
    }
    const std::vector<std::string> locked = settings.getLockedApplicationsBundleIds();
    lockedBundleIds.insert(locked.begin(), locked.end());
    if (settings.getLockAdministrativeApplications()) {
        // Protected as a group while that option is on, so not offered one by one.
        excludedBundleIds =
            applications::ConfigurationConstants::ADMINISTRATIVE_APPLICATIONS_BUNDLE_IDS;
    }
}

ApplicationsList SelectableApplications::compute()
{
    ApplicationsList list;
    list.applications = runningApplicationsOnly
                            ? service.lockableApplicationsAmong(std::exchange(running, {}))
                            : service.lockableApplications();
    const std::size_t dropped =
        std::erase_if(list.applications, [this](const applications::ApplicationEntityPtr& entity) {
            return isProtected(entity->bundleIdentifier);
        });
    list.someAreProtected = dropped > 0;
    return list;
}

bool SelectableApplications::isProtected(const std::string& bundleIdentifier) const
{
    return lockedBundleIds.contains(bundleIdentifier) ||
           std::any_of(
               excludedBundleIds.begin(),
               excludedBundleIds.end(),
               [&bundleIdentifier](const std::string& excluded) {
                   // a terminal of any make counts
                   return platform::current().workspace.answersTo(bundleIdentifier, excluded);
               }
           );
}

} // namespace ui
