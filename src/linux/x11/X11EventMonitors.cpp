#include "linux/x11/X11EventMonitors.h"

#include "linux/x11/Xkb.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include <unistd.h>

namespace x11 {

namespace {

constexpr std::uint64_t PRESSES =
    platform::EVENT_MASK_LEFT_MOUSE_DOWN | platform::EVENT_MASK_RIGHT_MOUSE_DOWN;

} // namespace

X11EventMonitors::X11EventMonitors(
    X11Desktop& desktop, const X11Guard& guard, platform::Timers& timers
)
    : desktop(desktop),
      guard(guard),
      inspector(desktop),
      presses(desktop, guard, timers),
      bits(queryModifierBits(desktop.connection())),
      subscription(desktop.subscribe([this](const xcb_generic_event_t& event) { handle(event); }))
{
    presses.onPress = [this](const ForeignPresses::Press& press) {
        send(
            false,
            press.right ? platform::EVENT_MASK_RIGHT_MOUSE_DOWN
                        : platform::EVENT_MASK_LEFT_MOUSE_DOWN,
            press.modifiers
        );
    };
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
    watchPresses();
}

platform::EventMonitorHandle X11EventMonitors::add(Monitor monitor)
{
    monitors[++latest] = std::move(monitor);
    watchPresses();
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
    } else if ((state.changed & XCB_XKB_STATE_PART_MODIFIER_STATE) != 0 && !monitors.empty()) {
        send(keysAreOurs(), platform::EVENT_MASK_FLAGS_CHANGED, state.mods);
    }
}

void X11EventMonitors::watchPresses()
{
    presses.watch(std::any_of(monitors.begin(), monitors.end(), [](const auto& entry) {
        return !entry.second.local && (entry.second.mask & PRESSES) != 0;
    }));
}

void X11EventMonitors::send(bool local, std::uint64_t mask, std::uint8_t modifiers)
{
    std::vector<platform::EventMonitorHandle> chosen;
    for (const auto& [handle, monitor] : monitors) {
        if (monitor.local == local && (monitor.mask & mask) != 0) {
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
