#include "applications/ConfigurationConstants.h"

#include "app/Constants.h"

namespace applications {

std::vector<std::string> ConfigurationConstants::BANNED_APPLICATIONS_BUNDLE_IDS()
{
    return {app::Constants::BUNDLE_ID(), app::Constants::HELPER_BUNDLE_ID};
}

const std::vector<std::string> ConfigurationConstants::WHITE_LIST_APPLICATIONS_BUNDLE_IDS{
    "com.apple.systempreferences"};

const std::vector<std::string> ConfigurationConstants::ADMINISTRATIVE_APPLICATIONS_BUNDLE_IDS{
    "com.apple.Terminal", "com.apple.keychainaccess", "com.apple.ActivityMonitor"};

} // namespace applications
