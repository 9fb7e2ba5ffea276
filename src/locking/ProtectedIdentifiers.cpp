#include "locking/ProtectedIdentifiers.h"

#include "applications/ConfigurationConstants.h"

namespace locking {

std::optional<std::set<std::string>>
protectedIdentifiers(storage::ConfigurationAndPreferencesService& settings)
{
    // Without a password there is no protection, or a storage that does not answer.
    if (!settings.hasPassword()) {
        return std::nullopt;
    }
    const std::vector<std::string> chosen = settings.getLockedApplicationsBundleIds();
    std::set<std::string> result(chosen.begin(), chosen.end());
    if (settings.getLockAdministrativeApplications()) {
        const auto& administrative =
            applications::ConfigurationConstants::ADMINISTRATIVE_APPLICATIONS_BUNDLE_IDS;
        result.insert(administrative.begin(), administrative.end());
    }
    return result;
}

} // namespace locking
