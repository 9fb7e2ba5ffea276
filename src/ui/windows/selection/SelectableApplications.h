// The applications that the user may choose from. Taken on the main thread, which alone may ask
// what runs and what the settings are; computed on any.
#pragma once

#include "applications/ApplicationEntity.h"
#include "applications/SystemApplicationsService.h"
#include "platform/RunningApplication.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace storage {
class ConfigurationAndPreferencesService;
} // namespace storage

namespace ui {

struct ApplicationsList
{
    std::vector<applications::ApplicationEntityPtr> applications; // sorted by name
    bool someAreProtected = false; // there are more, which need not be chosen any more
};

class SelectableApplications
{
public:
    /// Those that run now, or those that are installed. Main thread only.
    SelectableApplications(
        const applications::SystemApplicationsService& service,
        storage::ConfigurationAndPreferencesService& settings,
        bool runningApplicationsOnly
    );

    /// Reads the whole catalogue, so not for the main thread. Computes once: nothing of what was
    /// taken stays behind, so that what has been drawn is never let go of on another thread.
    ApplicationsList compute();

private:
    [[nodiscard]] bool isProtected(const std::string& bundleIdentifier) const;

    applications::SystemApplicationsService service;
    bool runningApplicationsOnly;
    std::vector<platform::RunningApplication> running;
    std::unordered_set<std::string> lockedBundleIds;
    std::vector<std::string> excludedBundleIds;
};

} // namespace ui
