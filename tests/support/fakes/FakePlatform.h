// A whole operating system for tests: every port in memory, told what to answer and when to fail,
// and one list of the calls in their order. Installed from construction to destruction.
#pragma once

#include "fakes/Calls.h"
#include "fakes/FakeApplication.h"
#include "fakes/FakeBundles.h"
#include "fakes/FakeDispatchQueues.h"
#include "fakes/FakeDistributedNotifications.h"
#include "fakes/FakeEventMonitors.h"
#include "fakes/FakeFileManager.h"
#include "fakes/FakeKeyboardStatus.h"
#include "fakes/FakeKeychainItems.h"
#include "fakes/FakeLog.h"
#include "fakes/FakeLoginItems.h"
#include "fakes/FakeProcessInfo.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeStatusBar.h"
#include "fakes/FakeTimers.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeUserNotifications.h"
#include "fakes/FakeWindows.h"
#include "fakes/FakeWorkspace.h"
#include "platform/Platform.h"

namespace fakes {

class FakePlatform
{
public:
    FakePlatform() { platform::install(&platform); }

    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;
    FakePlatform(FakePlatform&&) = delete;
    FakePlatform& operator=(FakePlatform&&) = delete;

    ~FakePlatform() { platform::install(nullptr); }

    Calls calls;
    FakeApplication application{calls};
    FakeBundles bundles;
    FakeDispatchQueues dispatchQueues;
    FakeDistributedNotifications distributedNotifications{calls};
    FakeEventMonitors eventMonitors{calls};
    FakeFileManager fileManager;
    FakeKeyboardStatus keyboardStatus;
    FakeKeychainItems keychainItems{calls};
    FakeLog log;
    FakeLoginItems loginItems{calls};
    FakeProcessInfo processInfo{calls};
    FakeScreens screens;
    FakeStatusBar statusBar{calls};
    FakeTimers timers;
    FakeUserDefaults userDefaults{calls};
    FakeUserNotifications userNotifications;
    FakeWindows windows{calls};
    FakeWorkspace workspace{calls};

private:
    platform::Platform platform{
        .application = application,
        .bundles = bundles,
        .dispatchQueues = dispatchQueues,
        .distributedNotifications = distributedNotifications,
        .eventMonitors = eventMonitors,
        .fileManager = fileManager,
        .keyboardStatus = keyboardStatus,
        .keychainItems = keychainItems,
        .log = log,
        .loginItems = loginItems,
        .processInfo = processInfo,
        .screens = screens,
        .statusBar = statusBar,
        .timers = timers,
        .userDefaults = userDefaults,
        .userNotifications = userNotifications,
        .windows = windows,
        .workspace = workspace,
    };
};

} // namespace fakes
