// Events are sent by hand, to the local monitors or to the global ones. Records who comes and goes.
// One thread.
#pragma once

#include "fakes/Calls.h"
#include "platform/EventMonitors.h"

#include <map>
#include <utility>
#include <vector>

namespace fakes {

class FakeEventMonitors final : public platform::EventMonitors
{
public:
    explicit FakeEventMonitors(Calls& calls) : calls(calls) {}

    platform::EventMonitorHandle
    addLocalMonitor(std::uint64_t mask, platform::EventHandler handler) override
    {
        calls.push_back("eventMonitors addLocalMonitor");
        local[++latest] = {mask, std::move(handler)};
        return latest;
    }

    platform::EventMonitorHandle
    addGlobalMonitor(std::uint64_t mask, platform::EventHandler handler) override
    {
        calls.push_back("eventMonitors addGlobalMonitor");
        global[++latest] = {mask, std::move(handler)};
        return latest;
    }

    void removeMonitor(platform::EventMonitorHandle handle) override
    {
        calls.push_back("eventMonitors removeMonitor");
        local.erase(handle);
        global.erase(handle);
    }

    void sendLocalFlagsChanged(std::uint64_t modifierFlags) const
    {
        send(local, platform::EVENT_MASK_FLAGS_CHANGED, {modifierFlags});
    }

    void sendGlobalFlagsChanged(std::uint64_t modifierFlags) const
    {
        send(global, platform::EVENT_MASK_FLAGS_CHANGED, {modifierFlags});
    }

    /// A button was pressed in a window of another program; `mask` is that of the one event.
    void sendGlobalMouseDown(std::uint64_t mask) const { send(global, mask, {}); }

    struct Monitor
    {
        std::uint64_t mask = 0;
        platform::EventHandler handler;
    };

    std::map<platform::EventMonitorHandle, Monitor> local;
    std::map<platform::EventMonitorHandle, Monitor> global;

private:
    static void send(
        const std::map<platform::EventMonitorHandle, Monitor>& monitors,
        std::uint64_t mask,
        const platform::Event& event
    )
    {
        std::vector<platform::EventHandler> handlers; // a handler may remove its monitor
        for (const auto& [handle, monitor] : monitors) {
            if ((monitor.mask & mask) != 0U) {
                handlers.push_back(monitor.handler);
            }
        }
        for (const platform::EventHandler& handler : handlers) {
            handler(event);
        }
    }

    Calls& calls;
    platform::EventMonitorHandle latest = 0;
};

} // namespace fakes
