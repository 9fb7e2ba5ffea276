#include "locking/ApplicationsLockerCentralService.h"

#include "locking/CoveringWindow.h"
#include "platform/Application.h"
#include "platform/Fatal.h"
#include "platform/Log.h"
#include "platform/Platform.h"
#include "platform/Screens.h"
#include "platform/Text.h"
#include "platform/Timers.h"
#include "platform/Workspace.h"
#include "storage/KeyConstants.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace locking {

namespace {

using applications::ApplicationEntityPtr;

constexpr double SCREENS_CHECK_SECONDS = 3.0;

/// What the field holds. Fatal when it is empty.
template <typename Field> auto& required(Field& field, std::string_view name)
{
    if (!field) {
        platform::fatal(std::string(name) + " is empty where it is needed");
    }
    return *field;
}

/// Nothing when the desktop cannot be asked.
std::optional<std::size_t> screensCount()
{
    const std::optional<std::vector<platform::Screen>> screens =
        platform::current().screens.screens();
    return screens.has_value() ? std::optional(screens->size()) : std::nullopt;
}

void log(std::string_view line)
{
    platform::current().log.line(line);
}

} // namespace

ApplicationsLockerCentralService::ApplicationsLockerCentralService(
    LockWindowFactory lockWindowFactory,
    storage::ConfigurationAndPreferencesService& configurationAndPreferencesService
)
    : configurationAndPreferencesService(configurationAndPreferencesService),
      lockWindowFactory(std::move(lockWindowFactory))
{
    configurationAndPreferencesService.addOnConfigurationChangeEvent(lifetime.guard([this] {
        settingsChanged();
    }));
    lastScreensCount = screensCount().value_or(0);
    refreshSettings();
}

ApplicationsLockerCentralService::~ApplicationsLockerCentralService()
{
    if (monitoringServiceStarted) {
        applicationsMonitorService.stopService();
    }
}

void ApplicationsLockerCentralService::start()
{
    if (!configurationAndPreferencesService.hasPassword()) {
        monitoringServiceStarted = false;
        log("Will not start. No password");
        return;
    }
    applicationsMonitorService.onApplicationWillStart = [this](const auto& application) {
        applicationWillStart(application);
    };
    applicationsMonitorService.onApplicationDidStart = [this](const auto& application) {
        applicationDidStart(application);
    };
    applicationsMonitorService.onApplicationTerminated = [this](const auto& application) {
        applicationTerminated(application);
    };
    applicationsMonitorService.onHelperTerminated = [this] { helperTerminated(); };
    platform::current().timers.scheduleTimer(SCREENS_CHECK_SECONDS, true, lifetime.guard([this] {
        checkScreensChange();
    }));
    platform::current().screens.observe(lifetime.guard([this] { screensMoved(); }));
    restoreBlockedApplication();
    applicationsMonitorService.startService();
    systemApplicationsService.startHelperApplication();
    monitoringServiceStarted = true;
    log("Monitoring services started");
}

void ApplicationsLockerCentralService::checkScreensChange()
{
    const std::optional<std::size_t> count = screensCount();
    if (count == lastScreensCount) {
        return;
    }
    if (applicationIsProtected) {
        unlockWindows();
        lock(currentlyOrPreviouslyProtectedApplication);
    }
    lastScreensCount = count.value_or(0);
}

/// Takes the lock that is up along, with what is typed. For another number of screens the next
/// check builds it anew.
void ApplicationsLockerCentralService::screensMoved()
{
    if (applicationIsProtected && screensCount() == lastScreensCount) {
        coverOtherScreens();
        required(passwordWindowController, "passwordWindowController").screensChanged();
    }
}

/// A storage that gave a password once and gives none now does not answer: nobody can take the
/// password away. Its other answers are then worth as little, so everything stays as it was.
void ApplicationsLockerCentralService::refreshSettings()
{
    std::string password = storedPassword();
    const bool hadPassword = PASSWORD.has_value() && !PASSWORD->empty();
    if (password.empty() && hadPassword) {
        platform::current().log.diagnostic(
            "The settings cannot be read; protection goes on with those last known"
        );
        return;
    }
    MONITORED_APPS = configurationAndPreferencesService.getLockedApplications();
    PASSWORD = std::move(password);
    ACTIVE = configurationAndPreferencesService.getApplicationIsActive();
    if (configurationAndPreferencesService.getLockAdministrativeApplications()) {
        const std::vector<ApplicationEntityPtr> administrative =
            systemApplicationsService.administrativeApplications();
        MONITORED_APPS->insert(MONITORED_APPS->end(), administrative.begin(), administrative.end());
    }
}

void ApplicationsLockerCentralService::settingsChanged()
{
    refreshSettings();
    if (!monitoringServiceStarted) {
        start();
    }
}

void ApplicationsLockerCentralService::restoreBlockedApplication()
{
    const std::optional<std::string> blocked =
        currentMonitoredApplicationService.currentMonitoredApplication();
    if (!blocked.has_value()) {
        return;
    }
    const ApplicationEntityPtr application =
        systemApplicationsService.applicationIsRunning(*blocked);
    if (application != nullptr) {
        lock(application);
    }
}

void ApplicationsLockerCentralService::applicationWillStart(const ApplicationEntityPtr& application)
{
    if (!required(ACTIVE, "ACTIVE")) {
        return;
    }
    log("Will start: " + application->name);
    if (isMonitored(application->bundleIdentifier)) {
        lock(application);
    }
}

void ApplicationsLockerCentralService::applicationDidStart(const ApplicationEntityPtr& application)
{
    if (!required(ACTIVE, "ACTIVE")) {
        return;
    }
    log("Did start: " + application->name);
    if (isMonitored(application->bundleIdentifier)) {
        required(passwordWindowController, "passwordWindowController").focus();
    }
}

void ApplicationsLockerCentralService::applicationTerminated(const ApplicationEntityPtr& application
)
{
    if (!required(ACTIVE, "ACTIVE")) {
        return;
    }
    log("Terminated: " + application->name);
    if (isMonitored(application->bundleIdentifier) && passwordWindowController != nullptr) {
        currentMonitoredApplicationService.unmarkMinitoredApplication();
        unlockWindows();
    }
}

void ApplicationsLockerCentralService::helperTerminated()
{
    log("Helper Terminated");
    systemApplicationsService.startHelperApplication();
}

void ApplicationsLockerCentralService::lock(const ApplicationEntityPtr& application)
{
    currentlyOrPreviouslyProtectedApplication = application;
    applicationIsProtected = true;
    if (!screensCount().has_value()) {
        // Covering will stop the process; the one that comes after it is to lock again.
        currentMonitoredApplicationService.markMinitoredApplication(application->bundleIdentifier);
    }
    coverOtherScreens();
    passwordWindowController = lockWindowFactory();
    LockWindow& window = required(passwordWindowController, "passwordWindowController");
    window.passwordEntered = [this, application](const std::string& typed) {
        passwordEntered(typed, application);
    };
    window.specialKeyPressed = [this, application] {
        systemApplicationsService.focusOnApplication(application->bundleIdentifier);
    };
    const std::string message = application->name + " is locked";
    currentMonitoredApplicationService.markMinitoredApplication(application->bundleIdentifier);
    window.showServiceWindow(message, application->icon);
}

void ApplicationsLockerCentralService::coverOtherScreens()
{
    // Covers of a lock that is still up stay until the new ones stand in front of them.
    const auto earlier = std::exchange(extraPasswordWindows, createCoveringWindows());
    for (const auto& window : extraPasswordWindows) {
        window->makeKeyAndOrderFront();
    }
}

void ApplicationsLockerCentralService::passwordEntered(
    const std::string& typed, const ApplicationEntityPtr& application
)
{
    if (!isPassword(typed)) {
        required(passwordWindowController, "passwordWindowController").displayErrorMessage("");
        return;
    }
    currentMonitoredApplicationService.unmarkMinitoredApplication();
    systemApplicationsService.focusOnApplication(application->bundleIdentifier);
    unlockWindows();
}

void ApplicationsLockerCentralService::unlockWindows()
{
    applicationIsProtected = false;
    for (const auto& window : extraPasswordWindows) {
        window->close();
    }
    platform::current().application.setPresentationOptions(platform::PRESENTATION_DEFAULT);
    LockWindow& window = required(passwordWindowController, "passwordWindowController");
    window.teardown();
    window.close();
}

bool ApplicationsLockerCentralService::isMonitored(const std::string& bundleIdentifier)
{
    const auto& monitored = required(MONITORED_APPS, "MONITORED_APPS");
    platform::Workspace& workspace = platform::current().workspace;
    return std::any_of(monitored.begin(), monitored.end(), [&](const auto& application) {
        return workspace.answersTo(bundleIdentifier, application->bundleIdentifier);
    });
}

/// An empty password is one that could not be read: it is read again, and while there is none
/// nothing that can be typed opens the lock.
bool ApplicationsLockerCentralService::isPassword(const std::string& typed)
{
    if (required(PASSWORD, "PASSWORD").empty()) {
        PASSWORD = storedPassword();
    }
    return !PASSWORD->empty() && platform::text::canonicallyEqual(typed, *PASSWORD);
}

std::string ApplicationsLockerCentralService::storedPassword()
{
    return configurationAndPreferencesService.keyValueStorage->getValue(
        storage::KeyConstants::APPLICATION_PASSWORD_KEY
    );
}

} // namespace locking
