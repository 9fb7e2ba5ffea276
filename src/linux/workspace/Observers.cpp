#include "linux/workspace/Observers.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace workspace {

namespace {

/// Calls `visit` with a copy of each entry that is there now and still there when its turn comes.
template <typename Entries, typename Visit> void forEach(const Entries& entries, const Visit& visit)
{
    const std::vector<typename Entries::value_type> turn(entries.begin(), entries.end());
    for (const auto& entry : turn) {
        const bool present = std::any_of(entries.begin(), entries.end(), [&](const auto& other) {
            return other.number == entry.number;
        });
        if (present) {
            visit(entry);
        }
    }
}

} // namespace

void Observers::add(
    const void* observer,
    platform::WorkspaceNotificationName name,
    platform::WorkspaceNotificationHandler handler
)
{
    observers.push_back({++latest, observer, name, std::move(handler)});
}

void Observers::remove(const void* observer, platform::WorkspaceNotificationName name)
{
    observers.remove_if([&](const Observer& entry) {
        return entry.observer == observer && entry.name == name;
    });
}

void Observers::remove(const void* observer)
{
    observers.remove_if([&](const Observer& entry) { return entry.observer == observer; });
}

void Observers::addKeyPath(
    const void* observer,
    const std::string& keyPath,
    unsigned options,
    platform::KeyValueHandler handler
)
{
    keyPathObservers.push_back({++latest, observer, keyPath, options, std::move(handler)});
}

void Observers::removeKeyPath(const void* observer, const std::string& keyPath)
{
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

void Observers::notify(const platform::WorkspaceNotification& notification)
{
    forEach(observers, [&](const Observer& entry) {
        if (entry.name == notification.name) {
            entry.handler(notification);
        }
    });
}

void Observers::notifyInserted(const platform::RunningApplication& application)
{
    change(
        platform::KEY_VALUE_OBSERVING_OPTION_NEW,
        {.newKey = std::vector{application}, .oldKey = std::nullopt}
    );
}

void Observers::notifyRemoved(const platform::RunningApplication& application)
{
    change(
        platform::KEY_VALUE_OBSERVING_OPTION_OLD,
        {.newKey = std::nullopt, .oldKey = std::vector{application}}
    );
}

void Observers::change(unsigned option, const platform::KeyValueChange& change)
{
    forEach(keyPathObservers, [&](const KeyPathObserver& entry) {
        if (entry.keyPath == platform::RUNNING_APPLICATIONS_KEY_PATH &&
            (entry.options & option) != 0U) {
            entry.handler(entry.keyPath, change);
        }
    });
}

} // namespace workspace
