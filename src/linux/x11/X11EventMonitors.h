// Changes of the modifier keys: while this program has the keyboard captured, or one of its windows
// has the input focus, they are the local monitors', otherwise the global ones'. Presses of mouse
// buttons are told to global monitors alone, and never those on this program's item in a status
// area: the toolkit hands a window its own. Main thread only.
#pragma once

#include "linux/x11/ForeignPresses.h"
#include "linux/x11/Keymap.h"
#include "linux/x11/WindowInspector.h"
#include "linux/x11/X11Desktop.h"
#include "linux/x11/X11Guard.h"
#include "platform/EventMonitors.h"

#include <map>

namespace x11 {

class X11EventMonitors final : public platform::EventMonitors
{
public:
    /// All must outlive this.
    X11EventMonitors(X11Desktop& desktop, const X11Guard& guard, platform::Timers& timers);

    platform::EventMonitorHandle
    addLocalMonitor(std::uint64_t mask, platform::EventHandler handler) override;
    platform::EventMonitorHandle
    addGlobalMonitor(std::uint64_t mask, platform::EventHandler handler) override;
    void removeMonitor(platform::EventMonitorHandle handle) override;

    /// The press that did it is none in another program's window, though a panel had it.
    void statusItemActivated() { presses.itemActivated(); }

private:
    struct Monitor
    {
        bool local = false;
        std::uint64_t mask = 0;
        platform::EventHandler handler;
    };

    platform::EventMonitorHandle add(Monitor monitor);
    void handle(const xcb_generic_event_t& event);
    void watchPresses();
    void send(bool local, std::uint64_t mask, std::uint8_t modifiers);
    std::uint64_t flagsOf(std::uint8_t modifiers) const;
    bool keysAreOurs() const;

    const X11Desktop& desktop;
    const X11Guard& guard;
    WindowInspector inspector;
    ForeignPresses presses;
    ModifierBits bits;
    std::map<platform::EventMonitorHandle, Monitor> monitors;
    platform::EventMonitorHandle latest = 0;
    X11Desktop::Subscription subscription;
};

} // namespace x11
