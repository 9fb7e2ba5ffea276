// Who wants to hear what of the workspace. Main thread. Observers may come and go while they are
// being called: one that is gone is not called any more, one that just came is called from the next
// event on.
#pragma once

#include "platform/Workspace.h"

#include <cstdint>
#include <list>
#include <string>

namespace workspace {

class Observers
{
public:
    void
    add(const void* observer,
        platform::WorkspaceNotificationName name,
        platform::WorkspaceNotificationHandler handler);
    void remove(const void* observer, platform::WorkspaceNotificationName name);
    void remove(const void* observer);

    void addKeyPath(
        const void* observer,
        const std::string& keyPath,
        unsigned options,
        platform::KeyValueHandler handler
    );
    /// Only the latest registration.
    void removeKeyPath(const void* observer, const std::string& keyPath);

    void notify(const platform::WorkspaceNotification& notification);
    void notifyInserted(const platform::RunningApplication& application);
    void notifyRemoved(const platform::RunningApplication& application);

private:
    struct Observer
    {
        std::uint64_t number = 0;
        const void* observer = nullptr;
        platform::WorkspaceNotificationName name{};
        platform::WorkspaceNotificationHandler handler;
    };

    struct KeyPathObserver
    {
        std::uint64_t number = 0;
        const void* observer = nullptr;
        std::string keyPath;
        unsigned options = 0;
        platform::KeyValueHandler handler;
    };

    void change(unsigned option, const platform::KeyValueChange& change);

    std::list<Observer> observers;
    std::list<KeyPathObserver> keyPathObservers;
    std::uint64_t latest = 0;
};

} // namespace workspace
