// The system tray of the display, which older and small panels offer. Main thread.
#pragma once

#include "linux/statusbar/StatusArea.h"
#include "linux/tray/TraySelection.h"

namespace tray {

class TrayArea final : public statusbar::StatusArea
{
public:
    /// The desktop must outlive this.
    explicit TrayArea(x11::X11Desktop& desktop);

    bool isPresent() override { return manager != XCB_NONE; }

    std::unique_ptr<statusbar::Showing> show(statusbar::ItemSource& item) override;

private:
    void setManager(xcb_window_t window);

    x11::X11Desktop& desktop;
    TraySelection selection;
    xcb_window_t manager; // none too when it let the item go
};

} // namespace tray
