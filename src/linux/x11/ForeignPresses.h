// Presses of the left and the right mouse button in windows that are not this program's, wherever
// they are and whoever holds the pointer. A press in a panel may turn out to be one on this
// program's own item there, which only the panel knows: it is told shortly after the button was let
// go, unless the panel reports the item activated until then, or did just before. Main thread.
#pragma once

#include "linux/x11/WindowInspector.h"
#include "linux/x11/X11Desktop.h"
#include "linux/x11/X11Guard.h"
#include "platform/Lifetime.h"
#include "platform/Timers.h"

#include <chrono>
#include <functional>
#include <vector>

namespace x11 {

class ForeignPresses
{
public:
    struct Press
    {
        bool right = false;
        std::uint8_t modifiers = 0; // as the core protocol has them
    };

    std::function<void(const Press& press)> onPress;

    /// All must outlive this.
    ForeignPresses(X11Desktop& desktop, const X11Guard& guard, platform::Timers& timers);

    /// Nothing is heard before, and after an end of it.
    void watch(bool wanted);

    /// The program's own item in a panel was activated.
    void itemActivated();

private:
    enum class Target
    {
        Own,
        Panel,
        Other
    };

    void handle(const xcb_generic_event_t& event);
    void pressed(std::uint32_t physicalButton);
    void released();
    std::uint8_t meaningOf(std::uint32_t physicalButton) const;
    Target targetAt(xcb_window_t topLevel) const;
    bool isPanel(xcb_window_t window) const;

    /// True for what a window manager drew around one of this program's windows.
    bool framesOwnWindow(xcb_window_t topLevel) const;
    void tell(const Press& press) const;

    const X11Desktop& desktop;
    const X11Guard& guard;
    platform::Timers& timers;
    WindowInspector inspector;
    bool watching = false;
    std::chrono::steady_clock::time_point lastActivation;
    std::vector<Press> held; // in panels, oldest first
    platform::Lifetime lifetime;
    X11Desktop::Subscription subscription;
};

} // namespace x11
