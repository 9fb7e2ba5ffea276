// Who manages the display's system tray, followed as managers come and go. Main thread.
#pragma once

#include "linux/x11/X11Desktop.h"

#include <functional>

namespace tray {

class TraySelection
{
public:
    /// The desktop must outlive this.
    explicit TraySelection(x11::X11Desktop& desktop);

    /// The manager's window; XCB_NONE where there is no tray.
    xcb_window_t manager() const { return owner; }

    /// Another manager, or none.
    std::function<void()> onChanged;

private:
    bool isOfChange(const xcb_generic_event_t& event) const;
    void handle(const xcb_generic_event_t& event);
    xcb_window_t readOwner() const;
    void follow();
    void change();

    const x11::X11Desktop& desktop;
    xcb_atom_t selection;
    xcb_window_t owner = XCB_NONE;
    x11::X11Desktop::Subscription subscription;
};

} // namespace tray
