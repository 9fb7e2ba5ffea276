// The one place where the user's settings are read, changed and validated. Nothing is cached: every
// getter reads the storage anew. Every setter stores, then calls all listeners in order of
// registration, whether or not the value changed. Main thread only.
#pragma once

#include "applications/ApplicationEntity.h"
#include "storage/IKeyValueStorage.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace storage {

struct PasswordValidation
{
    bool accepted = false;
    std::string message; // empty when accepted
};

class ConfigurationAndPreferencesService
{
public:
    using ConfigurationChangeHandler = std::function<void()>;

    /// An independent instance over the same stored keys.
    ConfigurationAndPreferencesService();

    /// The process-wide instance, created at first use.
    static ConfigurationAndPreferencesService& sharedInstance();

    /// There is no way to take a handler back.
    void addOnConfigurationChangeEvent(ConfigurationChangeHandler handler);

    /// What the settings stand for is another now, though they are not: all handlers are called.
    void applicationsChanged();

    std::vector<std::string> getLockedApplicationsBundleIds();

    /// The protected applications that are installed, sorted by name.
    std::vector<applications::ApplicationEntityPtr> getLockedApplications();

    void addLockedApplicationBundleId(const std::string& bundleId);
    void removeLockedApplicationBundleId(const std::string& bundleId);

    bool hasPassword();
    std::string getApplicationPassword();

    /// Stores the text unchecked; see `validateNewPassword`.
    void setApplicationPassword(const std::string& text);

    bool getApplicationIsActive();
    void setApplicationIsActive(bool active);

    bool getStartAtLogin();

    /// Storage only; switching the login item is its caller's business.
    void setStartAtLogin(bool enabled);

    bool getLockAdministrativeApplications();
    void setLockAdministrativeApplications(bool enabled);

    static PasswordValidation
    validateNewPassword(const std::string& password, const std::string& confirmation);

    const std::unique_ptr<IKeyValueStorage> keyValueStorage;

private:
    void notify();
    void storeLockedApplications(const std::vector<std::string>& bundleIds);
    void setFlag(const char* key, bool value);

    std::vector<ConfigurationChangeHandler> configurationChangeEventHandlers;
};

} // namespace storage
