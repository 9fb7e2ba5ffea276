#include "applications/SystemConfigurationService.h"

#include "app/Constants.h"
#include "platform/LoginItems.h"
#include "platform/Platform.h"
#include "platform/Text.h"
#include "platform/UserDefaults.h"

#include <optional>
#include <string>
#include <variant>

namespace applications {

bool SystemConfigurationService::darkModeOn() const
{
    const std::optional<platform::DefaultsDomain> domain =
        platform::current().userDefaults.persistentDomain(platform::GLOBAL_DOMAIN);
    if (!domain.has_value()) {
        return false;
    }
    const auto found = domain->find("AppleInterfaceStyle");
    if (found == domain->end()) {
        return false;
    }
    const std::string* style = std::get_if<std::string>(&found->second);
    return style != nullptr && platform::text::lowercase(*style) == "dark";
}

bool SystemConfigurationService::startAtLogin(bool enabled) const
{
    return platform::current().loginItems.setEnabled(app::Constants::HELPER_BUNDLE_ID, enabled);
}

} // namespace applications
