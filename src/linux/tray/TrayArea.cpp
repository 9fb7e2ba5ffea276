#include "linux/tray/TrayArea.h"

#include "linux/tray/DockedItem.h"
#include "platform/Call.h"

#include <utility>

namespace tray {

TrayArea::TrayArea(x11::X11Desktop& desktop)
    : desktop(desktop),
      selection(desktop),
      manager(selection.manager())
{
    selection.onChanged = [this] {
        setManager(XCB_NONE); // what the former one held is not in the new one
        setManager(selection.manager());
    };
}

std::unique_ptr<statusbar::Showing> TrayArea::show(statusbar::ItemSource& item)
{
    auto docked = std::make_unique<DockedItem>(desktop, manager, item);
    docked->onLetGo = [this] { setManager(XCB_NONE); };
    return docked;
}

void TrayArea::setManager(xcb_window_t window)
{
    if (std::exchange(manager, window) == window) {
        return;
    }
    platform::call(onPresenceChanged);
}

} // namespace tray
