// Everything that the logic needs from an operating system, in one place. The composition installs
// it as soon as the keychain is open, before any of the logic runs; tests install a fake.
// `install`: main thread; `current`: any thread.
#pragma once

namespace platform {

class Application;
class Bundles;
class DispatchQueues;
class DistributedNotifications;
class EventMonitors;
class FileManager;
class KeyboardStatus;
class KeychainItems;
class Log;
class LoginItems;
class ProcessInfo;
class Screens;
class StatusBar;
class Timers;
class UserDefaults;
class UserNotifications;
class Windows;
class Workspace;

struct Platform
{
    Application& application;
    Bundles& bundles;
    DispatchQueues& dispatchQueues;
    DistributedNotifications& distributedNotifications;
    EventMonitors& eventMonitors;
    FileManager& fileManager;
    KeyboardStatus& keyboardStatus;
    KeychainItems& keychainItems;
    Log& log;
    LoginItems& loginItems;
    ProcessInfo& processInfo;
    Screens& screens;
    StatusBar& statusBar;
    Timers& timers;
    UserDefaults& userDefaults;
    UserNotifications& userNotifications;
    Windows& windows;
    Workspace& workspace;
};

/// Makes `platform` the one that `current` gives. It must outlive its use; nullptr takes it away.
void install(const Platform* platform);

/// The installed platform. Fatal when there is none.
const Platform& current();

} // namespace platform
