// Whom the settings protect, seen with what is installed. Who is protected stays recognisable,
// whatever becomes of the installation; one that was chosen while it was not there is protected
// from the moment it is. Main thread.
#pragma once

#include "storage/ConfigurationAndPreferencesService.h"

#include <functional>
#include <set>
#include <string>

namespace locking {

class InstalledProtection
{
public:
    using IsInstalled = std::function<bool(const std::string& identifier)>;

    explicit InstalledProtection(IsInstalled isInstalled);

    /// The protected identifiers, installed or not; not called while the settings do not answer.
    std::function<void(const std::set<std::string>& identifiers)> onProtectedChanged;

    /// Tells whom these settings protect, now and at each change. To be called once; both must live
    /// to the end of the process.
    void follow(storage::ConfigurationAndPreferencesService& followed);

    /// Something was installed or removed. Before `follow` it counts for nothing.
    void applicationsChanged();

private:
    void tell();
    [[nodiscard]] std::set<std::string> findInstalled() const;

    IsInstalled isInstalled;
    storage::ConfigurationAndPreferencesService* settings = nullptr;
    std::set<std::string> installed; // of the protected ones
};

} // namespace locking
