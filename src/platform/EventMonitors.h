// Monitors of input events. A local monitor sees the events that reach this program, a global one
// those that go to others; one event is never reported to both. Main thread only.
#pragma once

#include "platform/Port.h"

#include <cstdint>
#include <functional>

namespace platform {

inline constexpr std::uint64_t EVENT_MASK_LEFT_MOUSE_DOWN = 0x2;
inline constexpr std::uint64_t EVENT_MASK_RIGHT_MOUSE_DOWN = 0x8;
inline constexpr std::uint64_t EVENT_MASK_FLAGS_CHANGED = 0x1000;

/// Bits of the modifier flags of an event.
inline constexpr std::uint64_t MODIFIER_FLAG_CAPS_LOCK = 0x10000;
inline constexpr std::uint64_t MODIFIER_FLAG_SHIFT = 0x20000;
inline constexpr std::uint64_t MODIFIER_FLAG_CONTROL = 0x40000;
inline constexpr std::uint64_t MODIFIER_FLAG_OPTION = 0x80000;
inline constexpr std::uint64_t MODIFIER_FLAG_COMMAND = 0x100000;

struct Event
{
    std::uint64_t modifierFlags = 0;
};

using EventHandler = std::function<void(const Event&)>;

/// Names an installed monitor; no two monitors of a process have the same.
using EventMonitorHandle = std::uint64_t;

class EventMonitors : public Port
{
public:
    /// Hears of modifier keys while this program has the keyboard.
    virtual EventMonitorHandle addLocalMonitor(std::uint64_t mask, EventHandler handler) = 0;

    /// Hears of modifier keys while another program has the keyboard, and of presses in the windows
    /// of other programs.
    virtual EventMonitorHandle addGlobalMonitor(std::uint64_t mask, EventHandler handler) = 0;

    /// From here on the monitor is not called any more. An unknown handle is ignored.
    virtual void removeMonitor(EventMonitorHandle handle) = 0;
};

} // namespace platform
