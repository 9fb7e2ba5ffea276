// The heart of the system: locks the screens when a protected application starts, and unlocks them
// for the password. Main thread only. It lives as long as the process, in which the settings
// service, the monitor and a timer keep calling it; after its end nothing does. What it cannot do
// without stops the process, so that no lock goes on in an unknown state.
#pragma once

#include "applications/ApplicationEntity.h"
#include "applications/ApplicationsMonitorService.h"
#include "applications/SystemApplicationsService.h"
#include "locking/CurrentMonitoredApplicationService.h"
#include "locking/LockWindow.h"
#include "platform/Lifetime.h"
#include "platform/Windows.h"
#include "storage/ConfigurationAndPreferencesService.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace locking {

class ApplicationsLockerCentralService
{
public:
    /// Reads the settings at once and again after each change of them.
    explicit ApplicationsLockerCentralService(
        LockWindowFactory lockWindowFactory,
        storage::ConfigurationAndPreferencesService& configurationAndPreferencesService =
            storage::ConfigurationAndPreferencesService::sharedInstance()
    );

    ApplicationsLockerCentralService(const ApplicationsLockerCentralService&) = delete;
    ApplicationsLockerCentralService& operator=(const ApplicationsLockerCentralService&) = delete;
    ApplicationsLockerCentralService(ApplicationsLockerCentralService&&) = delete;
    ApplicationsLockerCentralService& operator=(ApplicationsLockerCentralService&&) = delete;
    ~ApplicationsLockerCentralService();

    /// Begins to monitor, where there is a password; otherwise the first change of the settings
    /// that finds one does.
    void start();

    /// Builds a lock that is up anew when the number of screens is another one.
    void checkScreensChange();

private:
    void refreshSettings();
    void settingsChanged();
    void restoreBlockedApplication();
    void applicationWillStart(const applications::ApplicationEntityPtr& application);
    void applicationDidStart(const applications::ApplicationEntityPtr& application);
    void applicationTerminated(const applications::ApplicationEntityPtr& application);
    void helperTerminated();

    void lock(const applications::ApplicationEntityPtr& application);
    void screensMoved();
    void coverOtherScreens();
    void passwordEntered(
        const std::string& typed, const applications::ApplicationEntityPtr& application
    );
    void unlockWindows();

    bool isMonitored(const std::string& bundleIdentifier);
    bool isPassword(const std::string& typed);
    std::string storedPassword();

    std::unique_ptr<LockWindow> passwordWindowController;
    std::vector<std::unique_ptr<platform::PlainWindow>> extraPasswordWindows;
    applications::ApplicationsMonitorService applicationsMonitorService;
    applications::SystemApplicationsService systemApplicationsService;
    CurrentMonitoredApplicationService currentMonitoredApplicationService;
    storage::ConfigurationAndPreferencesService& configurationAndPreferencesService;
    bool monitoringServiceStarted = false;
    bool applicationIsProtected = false;
    applications::ApplicationEntityPtr currentlyOrPreviouslyProtectedApplication;
    std::size_t lastScreensCount = 0;

public:
    std::optional<std::vector<applications::ApplicationEntityPtr>> MONITORED_APPS;
    std::optional<std::string> PASSWORD;

private:
    std::optional<bool> ACTIVE;
    LockWindowFactory lockWindowFactory;
    platform::Lifetime lifetime;
};

} // namespace locking
