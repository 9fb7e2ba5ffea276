// A desktop whose applications start and end on command. Records every call. One thread.
#pragma once

#include "fakes/Calls.h"
#include "fakes/FakeIcon.h"
#include "platform/Workspace.h"

#include <algorithm>
#include <utility>

namespace fakes {

class FakeWorkspace final : public platform::Workspace
{
public:
    explicit FakeWorkspace(Calls& calls) : calls(calls) {}

    std::vector<platform::RunningApplication> runningApplications() override { return running; }

    std::optional<platform::RunningApplication> runningApplication(std::int32_t processIdentifier
    ) override
    {
        const auto found =
            std::find_if(running.begin(), running.end(), [&](const auto& application) {
                return application.processIdentifier == processIdentifier;
            });
        return found == running.end() ? std::nullopt : std::optional(*found);
    }

    std::vector<platform::RunningApplication>
    runningApplications(const std::string& bundleIdentifier) override
    {
        std::vector<platform::RunningApplication> result;
        std::copy_if(
            running.begin(),
            running.end(),
            std::back_inserter(result),
            [&](const auto& application) {
                return application.bundleIdentifier == bundleIdentifier;
            }
        );
        return result;
    }

    bool answersTo(const std::string& bundleIdentifier, const std::string& wanted) override
    {
        const auto role = roles.find(bundleIdentifier);
        return bundleIdentifier == wanted || (role != roles.end() && role->second == wanted);
    }

    std::optional<std::string> absolutePathForAppBundle(const std::string& bundleIdentifier
    ) override
    {
        const auto found = installed.find(bundleIdentifier);
        return found == installed.end() ? std::nullopt : std::optional(found->second);
    }

    platform::IconHandle iconForFile(const std::string& path) override
    {
        return loadIcon ? loadIcon(path) : std::make_shared<FakeIcon>(path);
    }

    bool activate(const platform::RunningApplication& application, unsigned options) override
    {
        calls.push_back(
            "workspace activate " + std::to_string(application.processIdentifier) + " " +
            std::to_string(options)
        );
        return !failing;
    }

    bool launchApplication(
        const std::string& path,
        unsigned options,
        const platform::LaunchConfiguration& configuration
    ) override
    {
        std::string call = "workspace launch " + path + " " + std::to_string(options);
        for (const auto& [name, value] : configuration) {
            call.append(" ").append(name).append("=").append(value);
        }
        calls.push_back(std::move(call));
        return !failing;
    }

    bool openUrl(const std::string& url) override
    {
        calls.push_back("workspace openUrl " + url);
        return !failing;
    }

    void addObserver(
        const void* observer,
        platform::WorkspaceNotificationName name,
        platform::WorkspaceNotificationHandler handler
    ) override
    {
        calls.push_back("workspace addObserver " + nameOf(name));
        observers.push_back({observer, name, std::move(handler)});
    }

    void removeObserver(const void* observer, platform::WorkspaceNotificationName name) override
    {
        calls.push_back("workspace removeObserver " + nameOf(name));
        std::erase_if(observers, [&](const Observer& entry) {
            return entry.observer == observer && entry.name == name;
        });
    }

    void removeObserver(const void* observer) override
    {
        calls.emplace_back("workspace removeObserver");
        std::erase_if(observers, [&](const Observer& entry) { return entry.observer == observer; });
    }

    void addKeyPathObserver(
        const void* observer,
        const std::string& keyPath,
        unsigned options,
        platform::KeyValueHandler handler
    ) override
    {
        calls.push_back("workspace addKeyPathObserver " + keyPath + " " + std::to_string(options));
        keyPathObservers.push_back({observer, keyPath, std::move(handler)});
    }

    void removeKeyPathObserver(const void* observer, const std::string& keyPath) override
    {
        calls.push_back("workspace removeKeyPathObserver " + keyPath);
        const auto found = std::find_if(
            keyPathObservers.rbegin(),
            keyPathObservers.rend(),
            [&](const KeyPathObserver& entry) {
                return entry.observer == observer && entry.keyPath == keyPath;
            }
        );
        if (found != keyPathObservers.rend()) {
            keyPathObservers.erase(std::next(found).base());
        }
    }

    /// Delivers a notification as it is.
    void notify(const platform::WorkspaceNotification& notification)
    {
        const std::vector<Observer> copy = observers;
        for (const Observer& entry : copy) {
            if (entry.name == notification.name) {
                entry.handler(notification);
            }
        }
    }

    /// Delivers a change of the running applications.
    void change(const platform::KeyValueChange& change)
    {
        const std::vector<KeyPathObserver> copy = keyPathObservers;
        for (const KeyPathObserver& entry : copy) {
            entry.handler(entry.keyPath, change);
        }
    }

    /// An application starts, as the desktop reports it: listed, will launch.
    void startLaunching(const platform::RunningApplication& application)
    {
        running.push_back(application);
        change({std::vector{application}, std::nullopt});
        notifyLaunch(platform::WorkspaceNotificationName::WillLaunchApplication, application);
    }

    void finishLaunching(const platform::RunningApplication& application)
    {
        notifyLaunch(platform::WorkspaceNotificationName::DidLaunchApplication, application);
    }

    void terminate(const platform::RunningApplication& application)
    {
        std::erase_if(running, [&](const auto& entry) {
            return entry.processIdentifier == application.processIdentifier;
        });
        change({std::nullopt, std::vector{application}});
        notifyApplication(
            platform::WorkspaceNotificationName::DidTerminateApplication, application
        );
    }

    void notifyApplication(
        platform::WorkspaceNotificationName name, const platform::RunningApplication& application
    )
    {
        notify({name, platform::UserInfo{{platform::WORKSPACE_APPLICATION_KEY, application}}});
    }

    std::vector<platform::RunningApplication> running;
    std::map<std::string, std::string> installed; // bundle identifier to path
    std::map<std::string, std::string> roles;     // bundle identifier to role
    std::function<platform::IconHandle(const std::string& path)> loadIcon;
    bool failing = false;

private:
    struct Observer
    {
        const void* observer = nullptr;
        platform::WorkspaceNotificationName name{};
        platform::WorkspaceNotificationHandler handler;
    };

    struct KeyPathObserver
    {
        const void* observer = nullptr;
        std::string keyPath;
        platform::KeyValueHandler handler;
    };

    static std::string nameOf(platform::WorkspaceNotificationName name)
    {
        switch (name) {
        case platform::WorkspaceNotificationName::WillLaunchApplication:
            return "willLaunch";
        case platform::WorkspaceNotificationName::DidLaunchApplication:
            return "didLaunch";
        case platform::WorkspaceNotificationName::DidTerminateApplication:
            return "didTerminate";
        case platform::WorkspaceNotificationName::DidActivateApplication:
            return "didActivate";
        case platform::WorkspaceNotificationName::DidDeactivateApplication:
            return "didDeactivate";
        }
        return "unknown";
    }

    void notifyLaunch(
        platform::WorkspaceNotificationName name, const platform::RunningApplication& application
    )
    {
        notify(
            {name,
             platform::UserInfo{
                 {platform::APPLICATION_PROCESS_IDENTIFIER_KEY,
                  static_cast<std::int64_t>(application.processIdentifier)},
                 {platform::WORKSPACE_APPLICATION_KEY, application},
             }}
        );
    }

    Calls& calls;
    std::vector<Observer> observers;
    std::vector<KeyPathObserver> keyPathObservers;
};

} // namespace fakes
