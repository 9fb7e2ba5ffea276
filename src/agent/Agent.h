// The composition of the agent: makes the adapters, installs them as the platform, and hands over
// to the delegate. Only main.cpp names adapters beside it. Main thread; one in a process. A
// keyring that stays closed ends the process: going on without the password would be going on
// unprotected.
#pragma once

#include "agent/Display.h"
#include "app/AppDelegate.h"
#include "linux/dbus/DBusDistributedNotifications.h"
#include "linux/dbus/DBusUserNotifications.h"
#include "linux/dbus/SettingsPortal.h"
#include "linux/process/StreamLog.h"
#include "linux/process/UnixProcessInfo.h"
#include "linux/qt/JsonFileUserDefaults.h"
#include "linux/qt/QtDispatchQueues.h"
#include "linux/qt/QtIconLoader.h"
#include "linux/qt/QtTimers.h"
#include "linux/secretservice/KeychainGate.h"
#include "linux/statusbar/DesktopStatusBar.h"
#include "linux/workspace/KernelProcessSource.h"
#include "linux/workspace/LinuxWorkspace.h"
#include "linux/workspace/OwnPrograms.h"
#include "linux/xdg/ApplicationCatalogue.h"
#include "linux/xdg/XdgApplicationIndex.h"
#include "linux/xdg/XdgBundles.h"
#include "linux/xdg/XdgFileManager.h"
#include "linux/xdg/XdgLoginItems.h"
#include "locking/InstalledProtection.h"
#include "platform/Platform.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace agent {

/// Where diagnostics of all adapters go. Any thread.
struct Reporter
{
    platform::Log* log;

    void operator()(std::string_view line) const { log->diagnostic(line); }
};

class Agent
{
public:
    Agent(
        process::StreamLog& log,
        process::UnixProcessInfo& processInfo,
        DisplayConnections connections
    );

    /// Opens the keychain, however long that takes, and then everything else.
    void start();

    /// The program was started a second time: the popover opens, if need be once the keychain is
    /// open.
    void activate();

    [[nodiscard]] bool mayQuit() const;
    [[nodiscard]] bool endsWithItsLastWindow() const;

    /// Waits a short while for what disk and keyring were not yet given. For the end of the
    /// process: there are no settings any more.
    void writeOut();

private:
    [[nodiscard]] platform::Platform adapters();
    [[nodiscard]] workspace::LinuxWorkspace::Parts workspaceParts();
    void keychainOpened(std::unique_ptr<platform::KeychainItems> items);
    [[noreturn]] void coversLost();
    [[noreturn]] void keychainRefused(const std::string& reason);
    void launched();

    process::StreamLog& log;
    process::UnixProcessInfo& processInfo;
    Reporter report{&log};
    qt::QtDispatchQueues queues;
    qt::QtTimers timers;
    qt::QtIconLoader icons{queues};
    std::string busAddress;
    dbus::DBusDistributedNotifications notifications;
    dbus::SettingsPortal settingsPortal;
    qt::JsonFileUserDefaults userDefaults;
    Display display;
    xdg::XdgEnvironment environment;
    xdg::ApplicationCatalogue catalogue;
    xdg::XdgApplicationIndex index;
    xdg::XdgBundles bundles;
    xdg::XdgFileManager fileManager;
    workspace::KernelProcessSource processes;
    workspace::OwnPrograms programs;
    xdg::XdgLoginItems loginItems;
    workspace::LinuxWorkspace workspace;
    secretservice::KeychainGate keychainGate;
    statusbar::DesktopStatusBar statusBar;
    dbus::DBusUserNotifications userNotifications;
    std::unique_ptr<platform::KeychainItems> keychain;
    std::optional<platform::Platform> platform;
    locking::InstalledProtection protection;
    app::AppDelegate delegate;
    bool activated = false; // before there was anything to open
};

} // namespace agent
