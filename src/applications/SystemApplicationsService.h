// Finds applications: installed, running, administrative; brings one forward; starts the login-item
// helper. Keeps no state, every call asks the platform anew. Main thread, except what says that any
// thread may call it.
#pragma once

#include "applications/ApplicationEntity.h"

#include <string>
#include <vector>

namespace applications {

class SystemApplicationsService
{
public:
    /// Installed applications that may be locked, sorted by name. Any thread.
    [[nodiscard]] std::vector<ApplicationEntityPtr> lockableApplications() const;

    /// The same from any folder, in the order of the walk. Any thread.
    [[nodiscard]] std::vector<ApplicationEntityPtr>
    getLockableApplicationsFrom(const std::string& path) const;

    /// Running applications that may be locked, sorted by name; two instances give two records.
    [[nodiscard]] std::vector<ApplicationEntityPtr> lockableRunningApplications() const;

    /// The same of applications that ran when the main thread asked. Any thread.
    [[nodiscard]] std::vector<ApplicationEntityPtr>
    lockableApplicationsAmong(const std::vector<platform::RunningApplication>& running) const;

    /// All running applications, unfiltered, in the platform's order.
    [[nodiscard]] std::vector<platform::RunningApplication> runningNSApplications() const;

    /// The first running instance; empty when none runs.
    [[nodiscard]] ApplicationEntityPtr applicationIsRunning(const std::string& bundleIdentifier
    ) const;

    /// Brings the first running instance forward; nothing when none runs.
    void focusOnApplication(const std::string& bundleIdentifier) const;

    /// Starts the login-item helper, without waiting; a failure is dropped.
    void startHelperApplication() const;

    /// The administrative tools that are installed, in the order of their list.
    [[nodiscard]] std::vector<ApplicationEntityPtr> administrativeApplications() const;

    /// Everything but this program and its helper.
    [[nodiscard]] bool isLockableApplicationEntity(const ApplicationEntity& entity) const;

    /// A running application that a user would recognise, and not a part of the system.
    [[nodiscard]] bool isLockableApplication(const platform::RunningApplication& application) const;
};

} // namespace applications
