#include "linux/workspace/WindowEvidence.h"

#include "platform/Call.h"

#include <utility>
#include <vector>

namespace workspace {

WindowEvidence::WindowEvidence(
    InstanceList& list, const Questions& ask, const AwaitedStarts& awaited
)
    : list(list),
      ask(ask),
      awaited(awaited)
{
}

void WindowEvidence::shown(const InstancePtr& instance, std::uint64_t window)
{
    for (const InstancePtr& other : std::vector<InstancePtr>(list.all())) {
        if (other != instance) {
            loseWindow(other, window); // it changed its class
        }
    }
    const bool appears = instance->windows.empty();
    if (!instance->windows.insert(window).second || !appears) {
        return;
    }
    const bool before = std::exchange(instance->windowShown, true);
    const auto since = std::exchange(instance->windowlessSince, std::nullopt);
    const InstancePtr start =
        awaited.contain(*instance) ? instance : awaited.latestOf(instance->application->identifier);
    instance->awaited.reset();
    if (start != nullptr) {
        start->awaited.reset();
    } else if (before && since && ask.now() - *since <= LONGEST_GAP) {
        return;
    } else {
        platform::call(onStartedAgain, *instance);
    }
    platform::call(onWindowShown, *instance);
    tellSameProcess(instance);
}

/// A process that executed one application after the other shows the window of both.
void WindowEvidence::tellSameProcess(const InstancePtr& instance) const
{
    for (const InstancePtr& other : std::vector<InstancePtr>(list.all())) {
        const bool same = other != instance && !other->guest && !instance->guest &&
                          other->leader.pid == instance->leader.pid;
        if (same && awaited.contain(*other)) {
            other->awaited.reset();
            other->windowShown = true;
            platform::call(onWindowShown, *other);
        }
    }
}

void WindowEvidence::there(const InstancePtr& instance, std::uint64_t window)
{
    instance->windows.insert(window);
    instance->windowShown = true;
}

void WindowEvidence::gone(std::uint64_t window)
{
    for (const InstancePtr& instance : std::vector<InstancePtr>(list.all())) {
        loseWindow(instance, window);
    }
}

void WindowEvidence::loseWindow(const InstancePtr& instance, std::uint64_t window)
{
    if (instance->windows.erase(window) == 0 || !instance->windows.empty()) {
        return;
    }
    instance->windowlessSince = ask.now();
    if (instance->guest) {
        list.remove(instance);
        platform::call(onEnded, *instance);
    }
}

} // namespace workspace
