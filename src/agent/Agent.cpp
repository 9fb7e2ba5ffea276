#include "agent/Agent.h"

#include "app/Constants.h"
#include "linux/process/DescriptorLimit.h"
#include "linux/session/Programs.h"
#include "linux/statusnotifier/StatusNotifierArea.h"
#include "linux/tray/TrayArea.h"
#include "linux/x11/Strength.h"
#include "linux/xdg/Roles.h"
#include "locking/window/PasswordWindowController.h"
#include "storage/ConfigurationAndPreferencesService.h"
#include "storage/KeyConstants.h"
#include "ui/hub/PresetersMainHub.h"

#include <QDesktopServices>
#include <QStandardPaths>
#include <QUrl>

#include <filesystem>
#include <set>
#include <utility>

namespace agent {

namespace {

std::filesystem::path ownFolder(QStandardPaths::StandardLocation location)
{
    return std::filesystem::path(QStandardPaths::writableLocation(location).toStdString()) /
           session::IDENTIFIER;
}

/// What a desktop may offer, the better first.
statusbar::DesktopStatusBar::Areas
statusAreas(const std::string& busAddress, x11::X11Desktop& desktop, const Reporter& report)
{
    statusbar::DesktopStatusBar::Areas areas;
    areas.push_back(std::make_unique<statusnotifier::StatusNotifierArea>(busAddress, report));
    areas.push_back(std::make_unique<tray::TrayArea>(desktop));
    return areas;
}

std::unique_ptr<locking::ApplicationsLockerCentralService> makeCentralService()
{
    return std::make_unique<locking::ApplicationsLockerCentralService>([] {
        return std::make_unique<locking::PasswordWindowController>();
    });
}

} // namespace

Agent::Agent(
    process::StreamLog& log, process::UnixProcessInfo& processInfo, DisplayConnections connections
)
    : log(log),
      processInfo(processInfo),
      busAddress(dbus::sessionBusAddress()),
      notifications(busAddress, log),
      settingsPortal(busAddress),
      userDefaults(
          (ownFolder(QStandardPaths::GenericConfigLocation) / "defaults.json").string(),
          [this] { return settingsPortal.interfaceStyle(); },
          log
      ),
      display(std::move(connections), queues, timers, report),
      environment(xdg::XdgEnvironment::fromProcess()),
      catalogue(
          environment,
          xdg::Roles::shipped(),
          report,
          (ownFolder(QStandardPaths::GenericDataLocation) / "recognition.conf").string()
      ),
      index(catalogue),
      bundles(catalogue),
      fileManager(catalogue),
      processes(report),
      programs(bundles.mainBundle(), index),
      loginItems(
          environment.configHome,
          {{app::Constants::HELPER_BUNDLE_ID, programs.helper()->executable}},
          report
      ),
      workspace(workspaceParts()),
      keychainGate(queues, {busAddress, ownFolder(QStandardPaths::GenericDataLocation)}, report),
      statusBar(statusAreas(busAddress, display.desktop, report), queues),
      userNotifications(busAddress, log),
      protection([this](const std::string& identifier) {
          return index.withIdentifier(identifier) != nullptr;
      }),
      delegate([] { return std::make_unique<ui::PresetersMainHub>(); }, makeCentralService)
{
    log.diagnostic(x11::strength(
        display.desktop.connection().extensions(),
        environment.waylandDisplay.empty() ? x11::Session::X11 : x11::Session::Wayland
    ));
    display.guard.onLost = [this] { coversLost(); };
    display.desktop.onLost = [this] { coversLost(); };
    statusBar.onActivated = [this] { display.eventMonitors.statusItemActivated(); };
    protection.onProtectedChanged = [this](const std::set<std::string>& identifiers) {
        catalogue.choose(identifiers);
    };
    catalogue.onChanged = [this] {
        processes.watchExecutables(programs.executables());
        queues.asyncMain([this] { protection.applicationsChanged(); });
    };
}

void Agent::start()
{
    keychainGate.open(
        [this](std::unique_ptr<platform::KeychainItems> items) {
            keychainOpened(std::move(items));
        },
        [this](const std::string& reason) { keychainRefused(reason); }
    );
}

void Agent::activate()
{
    activated = true;
    if (delegate.presetersMainHub != nullptr) {
        delegate.presetersMainHub->showPopover();
    }
}

bool Agent::mayQuit() const
{
    return delegate.applicationShouldTerminate() == app::TerminateReply::Now;
}

bool Agent::endsWithItsLastWindow() const
{
    return delegate.applicationShouldTerminateAfterLastWindowClosed();
}

void Agent::writeOut()
{
    userDefaults.finish();
    keychain.reset();
}

platform::Platform Agent::adapters()
{
    return {
        .application = display.application,
        .bundles = bundles,
        .dispatchQueues = queues,
        .distributedNotifications = notifications,
        .eventMonitors = display.eventMonitors,
        .fileManager = fileManager,
        .keyboardStatus = display.keyboardStatus,
        .keychainItems = *keychain,
        .log = log,
        .loginItems = loginItems,
        .processInfo = processInfo,
        .screens = display.screens,
        .statusBar = statusBar,
        .timers = timers,
        .userDefaults = userDefaults,
        .userNotifications = userNotifications,
        .windows = display.windows,
        .workspace = workspace,
    };
}

workspace::LinuxWorkspace::Parts Agent::workspaceParts()
{
    return {
        .processes = processes,
        .applications = programs,
        .windows = &display.windowSystem,
        .queues = queues,
        .timers = timers,
        .loadIcon = [this](const std::string& name) { return icons.load(name); },
        .openUrl =
            [](const std::string& url) {
                const process::UsualDescriptorLimit usual; // for the program that is started
                return QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
            },
        .report = report,
        .session = {environment.display, environment.waylandDisplay},
    };
}

void Agent::keychainOpened(std::unique_ptr<platform::KeychainItems> items)
{
    keychain = std::move(items);
    platform.emplace(adapters());
    platform::install(&*platform);
    protection.follow(storage::ConfigurationAndPreferencesService::sharedInstance());
    catalogue.start();
    workspace.start([this] { launched(); });
    locking::PasswordWindowController::prepare(); // while the workspace looks around
}

void Agent::launched()
{
    delegate.applicationDidFinishLaunching();
    if (activated) {
        delegate.presetersMainHub->showPopover();
    }
}

/// The helper is told, so that it does not start the agent, and with it the prompt, again and
/// again.
void Agent::keychainRefused(const std::string& reason)
{
    log.diagnostic(reason);
    notifications.post(storage::KeyConstants::TERMINATE_HELPER_KEY, session::IDENTIFIER);
    processInfo.exit(1);
}

/// Nothing that this process covers is covered any more; what the helper starts after it locks
/// again what is marked. Where the whole display went, nothing is started.
void Agent::coversLost()
{
    processInfo.exit(1);
}

} // namespace agent
