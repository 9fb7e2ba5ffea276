// The desktop's view of applications: which are installed, which run, when one starts, ends, comes
// to the front. Main thread only, except `iconForFile` and `answersTo`, which any thread may call;
// observers are called on the main thread, one event at a time, in the order in which things
// happened.
#pragma once

#include "platform/Port.h"
#include "platform/RunningApplication.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace platform {

enum class WorkspaceNotificationName
{
    WillLaunchApplication,
    DidLaunchApplication,
    DidTerminateApplication,
    DidActivateApplication,
    DidDeactivateApplication,
};

/// Integers where the entry is a process identifier.
using UserInfoValue = std::variant<std::int64_t, std::string, RunningApplication>;
using UserInfo = std::map<std::string, UserInfoValue>;

/// Key of the process identifier (an integer) in launch notifications.
inline constexpr auto APPLICATION_PROCESS_IDENTIFIER_KEY = "NSApplicationProcessIdentifier";
/// Key of the application (a `RunningApplication`) in all notifications.
inline constexpr auto WORKSPACE_APPLICATION_KEY = "NSWorkspaceApplicationKey";

struct WorkspaceNotification
{
    WorkspaceNotificationName name = WorkspaceNotificationName::WillLaunchApplication;
    std::optional<UserInfo> userInfo;
};

using WorkspaceNotificationHandler = std::function<void(const WorkspaceNotification&)>;

/// A change of an observed list. `newKey` holds what was inserted, `oldKey` what was removed.
struct KeyValueChange
{
    std::optional<std::vector<RunningApplication>> newKey;
    std::optional<std::vector<RunningApplication>> oldKey;
};

using KeyValueHandler =
    std::function<void(const std::string& keyPath, const std::optional<KeyValueChange>& change)>;

/// Key path of the list of running applications.
inline constexpr auto RUNNING_APPLICATIONS_KEY_PATH = "runningApplications";

inline constexpr unsigned KEY_VALUE_OBSERVING_OPTION_NEW = 1;
inline constexpr unsigned KEY_VALUE_OBSERVING_OPTION_OLD = 2;

inline constexpr unsigned ACTIVATE_IGNORING_OTHER_APPS = 2;
inline constexpr unsigned LAUNCH_DEFAULT = 0x10000;

/// Environment entries that are added for the started program.
using LaunchConfiguration = std::map<std::string, std::string>;

class Workspace : public Port
{
public:
    /// All running applications, oldest first.
    virtual std::vector<RunningApplication> runningApplications() = 0;

    /// The running application led by the process, or nothing when none is known (yet).
    virtual std::optional<RunningApplication> runningApplication(std::int32_t processIdentifier
    ) = 0;

    /// The instances of an application, oldest first. A role's identifier finds every application
    /// that plays it.
    virtual std::vector<RunningApplication> runningApplications(const std::string& bundleIdentifier
    ) = 0;

    /// True when a running application of that identifier counts as `wanted`: it is the same
    /// identifier, or that of a role which it plays.
    virtual bool answersTo(const std::string& bundleIdentifier, const std::string& wanted) = 0;

    /// Path of the installed application's bundle, or nothing when it is not installed.
    virtual std::optional<std::string> absolutePathForAppBundle(const std::string& bundleIdentifier
    ) = 0;

    /// The icon that stands for the file; never empty, a general one where nothing better is known.
    virtual IconHandle iconForFile(const std::string& path) = 0;

    /// Brings the application's windows forward. False when that could not be asked for.
    virtual bool activate(const RunningApplication& application, unsigned options) = 0;

    /// Starts the application at `path` without waiting for it. One that runs already is left as it
    /// is, which counts as success. False when it could not be started.
    virtual bool launchApplication(
        const std::string& path, unsigned options, const LaunchConfiguration& configuration
    ) = 0;

    /// Has the desktop open the URL with the program that the user prefers for it, without waiting.
    /// False when that could not be asked for.
    virtual bool openUrl(const std::string& url) = 0;

    /// Registers `handler` for `observer`. Registering twice calls it twice.
    virtual void addObserver(
        const void* observer, WorkspaceNotificationName name, WorkspaceNotificationHandler handler
    ) = 0;

    /// Drops every registration of `observer` for `name`.
    virtual void removeObserver(const void* observer, WorkspaceNotificationName name) = 0;

    /// Drops every notification registration of `observer`. Key paths are not touched.
    virtual void removeObserver(const void* observer) = 0;

    /// Registers `handler` for changes of the list at `keyPath`. Registering twice calls it twice.
    virtual void addKeyPathObserver(
        const void* observer, const std::string& keyPath, unsigned options, KeyValueHandler handler
    ) = 0;

    /// Drops the latest registration of `observer` for `keyPath`.
    virtual void removeKeyPathObserver(const void* observer, const std::string& keyPath) = 0;
};

} // namespace platform
