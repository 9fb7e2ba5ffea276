#include "locking/InstalledProtection.h"

#include "locking/ProtectedIdentifiers.h"
#include "platform/Call.h"

#include <optional>
#include <utility>

namespace locking {

InstalledProtection::InstalledProtection(IsInstalled isInstalled)
    : isInstalled(std::move(isInstalled))
{
}

void InstalledProtection::follow(storage::ConfigurationAndPreferencesService& followed)
{
    settings = &followed;
    settings->addOnConfigurationChangeEvent([this] { tell(); });
    tell();
    installed = findInstalled();
}

void InstalledProtection::applicationsChanged()
{
    if (settings == nullptr) {
        return;
    }
    std::set<std::string> found = findInstalled();
    if (std::exchange(installed, found) != found) {
        settings->applicationsChanged();
    }
}

void InstalledProtection::tell()
{
    const std::optional<std::set<std::string>> identifiers = protectedIdentifiers(*settings);
    if (identifiers) {
        platform::call(onProtectedChanged, *identifiers);
    }
}

std::set<std::string> InstalledProtection::findInstalled() const
{
    std::set<std::string> result = protectedIdentifiers(*settings).value_or(installed);
    std::erase_if(result, [this](const std::string& identifier) {
        return !isInstalled(identifier);
    });
    return result;
}

} // namespace locking
