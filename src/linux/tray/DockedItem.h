// An item in the system tray: a window with the picture, its title as a tip, and a menu of its own.
// Main thread.
#pragma once

#include "linux/statusbar/StatusArea.h"
#include "linux/tray/ItemTip.h"
#include "linux/tray/TrayWindow.h"

#include <QMenu>

#include <memory>
#include <string>

namespace tray {

class DockedItem final : public statusbar::Showing
{
public:
    /// All must outlive this.
    DockedItem(x11::X11Desktop& desktop, xcb_window_t manager, statusbar::ItemSource& item);

    /// The tray does not hold it any more; may end this.
    std::function<void()> onLetGo;

    void redraw() override;

    void menuChanged() override { menu.reset(); }

    std::optional<platform::Rect> frame() const override { return window.frame(); }

private:
    void showTitle(const std::string& title);
    void pressed(std::uint8_t button, int rootX, int rootY);
    void showMenu(int rootX, int rootY);

    statusbar::ItemSource& item;
    TrayWindow window;
    ItemTip tip;
    std::unique_ptr<QMenu> menu; // made when it is first asked for
};

} // namespace tray
