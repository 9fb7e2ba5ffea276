#include "storage/ConfigurationAndPreferencesService.h"

#include "applications/SortByKey.h"
#include "platform/Call.h"
#include "platform/Text.h"
#include "storage/KeyConstants.h"
#include "storage/KeyValueStorage.h"

#include <string_view>
#include <unordered_set>
#include <utility>

namespace storage {

namespace {

constexpr char SEPARATOR = ';';
constexpr auto ON = "1";
constexpr auto OFF = "0";

/// One below what its message says: two characters are enough.
constexpr std::size_t SMALLEST_PASSWORD = 2;

bool isOnUnlessTurnedOff(const std::string& stored)
{
    return stored.empty() || stored == ON;
}

std::vector<std::string> decodedList(std::string_view stored)
{
    std::vector<std::string> result;
    while (!stored.empty()) {
        const std::size_t end = stored.find(SEPARATOR);
        std::string piece = platform::text::trimmed(stored.substr(0, end));
        if (!piece.empty()) {
            result.push_back(std::move(piece));
        }
        stored.remove_prefix(end == std::string_view::npos ? stored.size() : end + 1);
    }
    return result;
}

std::vector<std::string> withoutDuplicates(const std::vector<std::string>& list)
{
    std::vector<std::string> result;
    std::unordered_set<std::string> seen;
    for (const std::string& element : list) {
        if (seen.insert(element).second) {
            result.push_back(element);
        }
    }
    return result;
}

} // namespace

ConfigurationAndPreferencesService::ConfigurationAndPreferencesService()
    : keyValueStorage(std::make_unique<KeyValueStorage>())
{
}

ConfigurationAndPreferencesService& ConfigurationAndPreferencesService::sharedInstance()
{
    static ConfigurationAndPreferencesService instance;
    return instance;
}

void ConfigurationAndPreferencesService::addOnConfigurationChangeEvent(
    ConfigurationChangeHandler handler
)
{
    configurationChangeEventHandlers.push_back(std::move(handler));
}

void ConfigurationAndPreferencesService::applicationsChanged()
{
    notify();
}

std::vector<std::string> ConfigurationAndPreferencesService::getLockedApplicationsBundleIds()
{
    return decodedList(keyValueStorage->getValue(KeyConstants::APPLICATIONS_KEY));
}

std::vector<applications::ApplicationEntityPtr>
ConfigurationAndPreferencesService::getLockedApplications()
{
    std::vector<applications::ApplicationEntityPtr> result;
    for (const std::string& bundleId : getLockedApplicationsBundleIds()) {
        applications::ApplicationEntityPtr entity =
            applications::ApplicationEntity::fromBundleIdentifier(bundleId);
        if (entity != nullptr) {
            result.push_back(std::move(entity));
        }
    }
    return applications::sortedByKey(
        result,
        [](const applications::ApplicationEntity& entity) { return entity.name; },
        applications::compareCodePoints
    );
}

void ConfigurationAndPreferencesService::addLockedApplicationBundleId(const std::string& bundleId)
{
    std::vector<std::string> list = getLockedApplicationsBundleIds();
    list.push_back(bundleId);
    storeLockedApplications(withoutDuplicates(list));
    notify();
}

void ConfigurationAndPreferencesService::removeLockedApplicationBundleId(const std::string& bundleId
)
{
    std::vector<std::string> list = getLockedApplicationsBundleIds();
    std::erase(list, bundleId);
    storeLockedApplications(list);
    notify();
}

bool ConfigurationAndPreferencesService::hasPassword()
{
    return !getApplicationPassword().empty();
}

std::string ConfigurationAndPreferencesService::getApplicationPassword()
{
    return keyValueStorage->getValue(KeyConstants::APPLICATION_PASSWORD_KEY);
}

void ConfigurationAndPreferencesService::setApplicationPassword(const std::string& text)
{
    keyValueStorage->setValue(KeyConstants::APPLICATION_PASSWORD_KEY, text);
    notify();
}

bool ConfigurationAndPreferencesService::getApplicationIsActive()
{
    return isOnUnlessTurnedOff(keyValueStorage->getValue(KeyConstants::APPLICATION_IS_ACTIVE_KEY));
}

void ConfigurationAndPreferencesService::setApplicationIsActive(bool active)
{
    setFlag(KeyConstants::APPLICATION_IS_ACTIVE_KEY, active);
}

bool ConfigurationAndPreferencesService::getStartAtLogin()
{
    return keyValueStorage->getValue(KeyConstants::START_AT_LOGIN_KEY) == ON;
}

void ConfigurationAndPreferencesService::setStartAtLogin(bool enabled)
{
    setFlag(KeyConstants::START_AT_LOGIN_KEY, enabled);
}

bool ConfigurationAndPreferencesService::getLockAdministrativeApplications()
{
    return isOnUnlessTurnedOff(keyValueStorage->getValue(KeyConstants::LOCK_ADMINISTRATIVE_APPS_KEY)
    );
}

void ConfigurationAndPreferencesService::setLockAdministrativeApplications(bool enabled)
{
    setFlag(KeyConstants::LOCK_ADMINISTRATIVE_APPS_KEY, enabled);
}

PasswordValidation ConfigurationAndPreferencesService::validateNewPassword(
    const std::string& password, const std::string& confirmation
)
{
    const std::size_t count = platform::text::characterCount(password);
    if (count == 0) {
        return {false, "The password cannot be empty"};
    }
    if (count < SMALLEST_PASSWORD) {
        return {false, "The password cannot be smaller than 3 characters"};
    }
    if (!platform::text::canonicallyEqual(password, confirmation)) {
        return {false, "The passwords do not match"};
    }
    return {true, ""};
}

void ConfigurationAndPreferencesService::notify()
{
    // A handler may register another one, or change a setting in turn.
    const std::vector<ConfigurationChangeHandler> handlers = configurationChangeEventHandlers;
    for (const ConfigurationChangeHandler& handler : handlers) {
        platform::call(handler);
    }
}

void ConfigurationAndPreferencesService::storeLockedApplications(
    const std::vector<std::string>& bundleIds
)
{
    std::string text;
    for (const std::string& bundleId : bundleIds) {
        text.append(bundleId).push_back(SEPARATOR);
    }
    keyValueStorage->setValue(KeyConstants::APPLICATIONS_KEY, text);
}

void ConfigurationAndPreferencesService::setFlag(const char* key, bool value)
{
    keyValueStorage->setValue(key, value ? ON : OFF);
    notify();
}

} // namespace storage
