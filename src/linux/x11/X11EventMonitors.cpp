#include "linux/x11/X11EventMonitors.h"

#include "linux/x11/Xkb.h"

#include <array>
#include <utility>
#include <vector>

#include <unistd.h>

namespace x11 {

X11EventMonitors::X11EventMonitors(X11Desktop& desktop, const X11Guard& guard)
    : desktop(desktop),
      guard(guard),
      inspector(desktop),
      bits(queryModifierBits(desktop.connection())),
      subscription(desktop.subscribe([this](const xcb_generic_event_t& event) { handle(event); }))
{
}

platform::EventMonitorHandle
X11EventMonitors::addLocalMonitor(std::uint64_t mask, platform::EventHandler handler)
{
    return add({true, mask, std::move(handler)});
}

platform::EventMonitorHandle
X11EventMonitors::addGlobalMonitor(std::uint64_t mask, platform::EventHandler handler)
{
    return add({false, mask, std::move(handler)});
}

void X11EventMonitors::removeMonitor(platform::EventMonitorHandle handle)
{
    monitors.erase(handle);
}

platform::EventMonitorHandle X11EventMonitors::add(Monitor monitor)
{
    monitors[++latest] = std::move(monitor);
    return latest;
}

void X11EventMonitors::handle(const xcb_generic_event_t& event)
{
    if (typeOf(event) == XCB_MAPPING_NOTIFY) {
        bits = queryModifierBits(desktop.connection());
        return;
    }
    const Extensions& extensions = desktop.connection().extensions();
    if (!extensions.xkb || typeOf(event) != extensions.xkbEvent) {
        return;
    }
    const auto& state = as<xcb_xkb_state_notify_event_t>(event);
    if (state.xkbType != XCB_XKB_STATE_NOTIFY) {
        bits = queryModifierBits(desktop.connection()); // another keyboard, or another map of it
    } else if ((state.changed & XCB_XKB_STATE_PART_MODIFIER_STATE) != 0) {
        send(state.mods);
    }
}

void X11EventMonitors::send(std::uint8_t modifiers)
{
    if (monitors.empty()) {
        return;
    }
    const bool local = keysAreOurs();
    std::vector<platform::EventMonitorHandle> chosen;
    for (const auto& [handle, monitor] : monitors) {
        if (monitor.local == local && (monitor.mask & platform::EVENT_MASK_FLAGS_CHANGED) != 0) {
            chosen.push_back(handle);
        }
    }
    for (const platform::EventMonitorHandle handle : chosen) {
        const auto found = monitors.find(handle); // an earlier handler may have removed it
        if (found != monitors.end() && found->second.handler) {
            const platform::EventHandler handler = found->second.handler;
            handler({flagsOf(modifiers)});
        }
    }
}

std::uint64_t X11EventMonitors::flagsOf(std::uint8_t modifiers) const
{
    using Meaning = std::pair<std::uint8_t, std::uint64_t>;
    const std::array meanings{
        Meaning{XCB_MOD_MASK_LOCK, platform::MODIFIER_FLAG_CAPS_LOCK},
        Meaning{XCB_MOD_MASK_SHIFT, platform::MODIFIER_FLAG_SHIFT},
        Meaning{XCB_MOD_MASK_CONTROL, platform::MODIFIER_FLAG_CONTROL},
        Meaning{bits.alt, platform::MODIFIER_FLAG_OPTION},
        Meaning{bits.super, platform::MODIFIER_FLAG_COMMAND},
    };
    std::uint64_t flags = 0;
    for (const auto& [bit, flag] : meanings) {
        flags |= (modifiers & bit) != 0 ? flag : 0U;
    }
    return flags;
}

bool X11EventMonitors::keysAreOurs() const
{
    if (guard.captured()) {
        return true;
    }
    const xcb_window_t focused = inspector.focusedWindow();
    return focused != XCB_NONE && inspector.processOf(focused) == getpid();
}

} // namespace x11
