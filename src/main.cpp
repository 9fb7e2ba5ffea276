// The composition root: makes the adapters, installs them as the platform, and hands over to the
// delegate. Nothing else in the program names an adapter.
#include "app/AppDelegate.h"
#include "app/Constants.h"
#include "linux/dbus/DBusDistributedNotifications.h"
#include "linux/dbus/DBusUserNotifications.h"
#include "linux/dbus/SettingsPortal.h"
#include "linux/process/StreamLog.h"
#include "linux/process/UnixProcessInfo.h"
#include "linux/qt/JsonFileUserDefaults.h"
#include "linux/qt/QtDispatchQueues.h"
#include "linux/qt/QtIconLoader.h"
#include "linux/qt/QtTimers.h"
#include "linux/qt/QtX11Connection.h"
#include "linux/qt/QuitRequests.h"
#include "linux/secretservice/KeychainGate.h"
#include "linux/session/Programs.h"
#include "linux/session/SessionInstance.h"
#include "linux/statusbar/DesktopStatusBar.h"
#include "linux/statusnotifier/StatusNotifierArea.h"
#include "linux/tray/TrayArea.h"
#include "linux/workspace/KernelProcessSource.h"
#include "linux/workspace/LinuxWorkspace.h"
#include "linux/workspace/OwnPrograms.h"
#include "linux/x11/Strength.h"
#include "linux/x11/X11Application.h"
#include "linux/x11/X11EventMonitors.h"
#include "linux/x11/X11KeyboardStatus.h"
#include "linux/x11/X11Screens.h"
#include "linux/x11/X11WindowSystem.h"
#include "linux/x11/X11Windows.h"
#include "linux/xdg/ApplicationCatalogue.h"
#include "linux/xdg/Roles.h"
#include "linux/xdg/XdgApplicationIndex.h"
#include "linux/xdg/XdgBundles.h"
#include "linux/xdg/XdgFileManager.h"
#include "linux/xdg/XdgLoginItems.h"
#include "locking/ProtectedIdentifiers.h"
#include "locking/window/PasswordWindowController.h"
#include "platform/Platform.h"
#include "storage/ConfigurationAndPreferencesService.h"
#include "storage/KeyConstants.h"
#include "ui/hub/PresetersMainHub.h"
#include "ui/views/Images.h"
#include "ui/views/Theme.h"

#include <QApplication>
#include <QDesktopServices>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QUrl>

#include <array>
#include <csignal>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr auto IDENTIFIER = "com.quorvent.Tarvel";

std::filesystem::path ownFolder(QStandardPaths::StandardLocation location)
{
    return std::filesystem::path(QStandardPaths::writableLocation(location).toStdString()) /
           IDENTIFIER;
}

/// What a desktop may offer, the better first.
statusbar::DesktopStatusBar::Areas
statusAreas(const std::string& busAddress, x11::X11Desktop& desktop)
{
    statusbar::DesktopStatusBar::Areas areas;
    areas.push_back(std::make_unique<statusnotifier::StatusNotifierArea>(busAddress));
    areas.push_back(std::make_unique<tray::TrayArea>(desktop));
    return areas;
}

/// Where diagnostics of all adapters go. Any thread.
struct Reporter
{
    platform::Log* log;

    void operator()(std::string_view line) const { log->diagnostic(line); }
};

/// The two connections of the lock and what stands on them.
class Display
{
public:
    Display(
        std::unique_ptr<x11::Connection> forGuard,
        std::unique_ptr<x11::Connection> forQuestions,
        platform::DispatchQueues& queues,
        platform::Timers& timers,
        Reporter report
    )
        : guard(std::move(forGuard), queues, report),
          desktop(std::move(forQuestions), queues, report),
          windowSystem(desktop, guard, timers),
          application(guard, queues, windowSystem),
          eventMonitors(desktop, guard, timers),
          keyboardStatus(desktop),
          screens(desktop),
          windows(guard, desktop, qt::syncWithX11)
    {
    }

    x11::X11Guard guard;
    x11::X11Desktop desktop;
    x11::X11WindowSystem windowSystem;
    x11::X11Application application;
    x11::X11EventMonitors eventMonitors;
    x11::X11KeyboardStatus keyboardStatus;
    x11::X11Screens screens;
    x11::X11Windows windows;
};

class Agent
{
public:
    Agent(
        process::StreamLog& log,
        process::UnixProcessInfo& processInfo,
        std::unique_ptr<x11::Connection> forGuard,
        std::unique_ptr<x11::Connection> forQuestions
    )
        : log(log),
          processInfo(processInfo),
          display(std::move(forGuard), std::move(forQuestions), queues, timers, report)
    {
        log.diagnostic(x11::strength(display.desktop.connection().extensions()));
        display.guard.onLost = [this] { coversLost(); };
        display.desktop.onLost = [this] { coversLost(); };
        statusBar.onActivated = [this] { display.eventMonitors.statusItemActivated(); };
    }

    /// Opens the keychain, however long that takes, and then everything else.
    void start()
    {
        keychainGate.open(
            [this](std::unique_ptr<platform::KeychainItems> items) {
                keychainOpened(std::move(items));
            },
            [this](const std::string& reason) { keychainRefused(reason); }
        );
    }

    /// The program was started a second time.
    void activate() const
    {
        if (delegate.presetersMainHub != nullptr) {
            delegate.presetersMainHub->showPopover();
        }
    }

    bool mayQuit() const
    {
        return delegate.applicationShouldTerminate() == app::TerminateReply::Now;
    }

private:
    void keychainOpened(std::unique_ptr<platform::KeychainItems> items)
    {
        keychain = std::move(items);
        platform.emplace(platform::Platform{
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
        });
        platform::install(&*platform);
        catalogue.onChanged = [this] {
            processes.watchExecutables(programs.executables());
            queues.asyncMain([this] { applicationsChanged(); });
        };
        followProtection();
        catalogue.start();
        workspace.start([this] { delegate.applicationDidFinishLaunching(); });
        locking::PasswordWindowController::prepare(); // while the workspace looks around
    }

    /// Whoever is protected stays recognisable, whatever becomes of the entry in the catalogue.
    void followProtection()
    {
        const auto tell = [this] {
            if (auto identifiers = locking::protectedIdentifiers(settings())) {
                catalogue.choose(std::move(*identifiers));
            }
        };
        settings().addOnConfigurationChangeEvent(tell);
        tell();
        protectedAndInstalled = findProtected();
    }

    /// One that was chosen while it was not installed is protected from now on.
    void applicationsChanged()
    {
        std::set<std::string> found = findProtected();
        if (std::exchange(protectedAndInstalled, found) != found) {
            settings().applicationsChanged();
        }
    }

    std::set<std::string> findProtected()
    {
        std::set<std::string> result =
            locking::protectedIdentifiers(settings()).value_or(protectedAndInstalled);
        std::erase_if(result, [this](const std::string& identifier) {
            return index.withIdentifier(identifier) == nullptr;
        });
        return result;
    }

    static storage::ConfigurationAndPreferencesService& settings()
    {
        return storage::ConfigurationAndPreferencesService::sharedInstance();
    }

    /// Going on without the password would mean going on without protection. The helper is told, so
    /// that it does not start the agent, and with it the prompt, again and again.
    [[noreturn]] void keychainRefused(const std::string& reason)
    {
        log.diagnostic(reason);
        notifications.post(storage::KeyConstants::TERMINATE_HELPER_KEY, IDENTIFIER);
        processInfo.exit(1);
    }

    /// Nothing that this process covers is covered any more; what the helper starts after it locks
    /// again what is marked. Where the whole display went, nothing is started.
    [[noreturn]] void coversLost()
    {
        userDefaults.finish();
        processInfo.exit(1);
    }

    process::StreamLog& log;
    process::UnixProcessInfo& processInfo;
    Reporter report{&log};
    qt::QtDispatchQueues queues;
    qt::QtTimers timers;
    qt::QtIconLoader icons;
    std::string busAddress = dbus::sessionBusAddress();
    dbus::DBusDistributedNotifications notifications{busAddress, log};
    dbus::SettingsPortal settingsPortal{busAddress};
    qt::JsonFileUserDefaults userDefaults{
        (ownFolder(QStandardPaths::GenericConfigLocation) / "defaults.json").string(),
        [this] { return settingsPortal.interfaceStyle(); },
        log};
    Display display;
    xdg::XdgEnvironment environment = xdg::XdgEnvironment::fromProcess();
    xdg::ApplicationCatalogue catalogue{
        environment,
        xdg::Roles::shipped(),
        report,
        (ownFolder(QStandardPaths::GenericDataLocation) / "recognition.conf").string()};
    xdg::XdgApplicationIndex index{catalogue};
    xdg::XdgBundles bundles{catalogue};
    xdg::XdgFileManager fileManager{catalogue};
    workspace::KernelProcessSource processes{report};
    workspace::OwnPrograms programs{bundles.mainBundle(), index};
    xdg::XdgLoginItems loginItems{
        environment.configHome,
        {{app::Constants::HELPER_BUNDLE_ID, programs.helper()->executable}},
        report};
    workspace::LinuxWorkspace workspace{workspace::LinuxWorkspace::Parts{
        .processes = processes,
        .applications = programs,
        .windows = &display.windowSystem,
        .queues = queues,
        .timers = timers,
        .loadIcon = [this](const std::string& name) { return icons.load(name); },
        .openUrl = [](const std::string& url
                   ) { return QDesktopServices::openUrl(QUrl(QString::fromStdString(url))); },
        .report = report,
        .session = {environment.display, environment.waylandDisplay},
    }};
    secretservice::KeychainGate keychainGate{
        queues, {busAddress, ownFolder(QStandardPaths::GenericDataLocation)}, report};
    statusbar::DesktopStatusBar statusBar{statusAreas(busAddress, display.desktop), queues};
    dbus::DBusUserNotifications userNotifications{busAddress, log};
    std::unique_ptr<platform::KeychainItems> keychain;
    std::optional<platform::Platform> platform;
    std::set<std::string> protectedAndInstalled;
    app::AppDelegate delegate{
        [] { return std::make_unique<ui::PresetersMainHub>(); },
        [] {
            return std::make_unique<locking::ApplicationsLockerCentralService>([] {
                return std::make_unique<locking::PasswordWindowController>();
            });
        }};
};

} // namespace

int main(int argc, char** argv)
{
    process::StreamLog log;
    process::UnixProcessInfo processInfo(argc, argv);
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));

    session::SessionInstance instance(session::AGENT);
    instance.onProblem = Reporter{&log};
    if (instance.acquire() == session::Acquired::AlreadyRunning) {
        return 0;
    }

    auto forGuard = x11::Connection::open();
    auto forQuestions = x11::Connection::open();
    if (forGuard == nullptr || forQuestions == nullptr) {
        log.diagnostic("Tarvel needs an X11 display, and there is none that can be reached");
        return 1;
    }

    // The user's arguments are not the toolkit's, and the lock stands on X11 alone.
    std::string platformOption = "-platform";
    std::string platformName = "xcb";
    std::array<char*, 4> arguments{argv[0], platformOption.data(), platformName.data(), nullptr};
    int argumentCount = 3;
    QApplication application(argumentCount, arguments.data());
    QApplication::setApplicationName(QStringLiteral("Tarvel"));
    QApplication::setDesktopFileName(QString::fromLatin1(IDENTIFIER));
    QApplication::setQuitOnLastWindowClosed(false);
    ui::Theme::install(application);
    QApplication::setWindowIcon(ui::requiredImage(QStringLiteral("ApplicationIcon")));

    Agent agent(log, processInfo, std::move(forGuard), std::move(forQuestions));
    const qt::QuitRequests quitRequests(application, [&agent] { return agent.mayQuit(); });
    instance.onActivated = [&agent] { agent.activate(); };
    std::optional<QSocketNotifier> secondStart;
    if (instance.fd() >= 0) {
        secondStart.emplace(instance.fd(), QSocketNotifier::Read);
        QObject::connect(&*secondStart, &QSocketNotifier::activated, [&instance] {
            instance.handle();
        });
    }
    agent.start();
    return QApplication::exec();
}
