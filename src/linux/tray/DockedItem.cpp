#include "linux/tray/DockedItem.h"

#include "linux/statusbar/ItemPicture.h"
#include "platform/Call.h"
#include "toolkit/ScreenGeometry.h"

#include <cstddef>
#include <string>

namespace tray {

namespace {

QString labelOf(const std::string& title)
{
    return QString::fromStdString(title).replace('&', "&&"); // a single one marks a letter
}

std::unique_ptr<QMenu> menuOf(statusbar::ItemSource& item)
{
    auto menu = std::make_unique<QMenu>();
    for (std::size_t entry = 0; entry < item.menu().size(); ++entry) {
        menu->addAction(labelOf(item.menu()[entry].title), [&item, entry] { item.choose(entry); });
    }
    return menu;
}

QPoint toolkitPlace(int rootX, int rootY)
{
    return toolkit::toolkitGeometry({rootX, rootY, 1, 1}).topLeft();
}

} // namespace

DockedItem::DockedItem(x11::X11Desktop& desktop, xcb_window_t manager, statusbar::ItemSource& item)
    : item(item),
      window(desktop, manager)
{
    showTitle(item.look().title);
    window.onExposed = [this] { redraw(); };
    window.onPressed = [this](std::uint8_t button, int rootX, int rootY) {
        pressed(button, rootX, rootY);
    };
    window.onPointerMoved = [this](int rootX, int rootY) {
        tip.pointerMoved(toolkitPlace(rootX, rootY));
    };
    window.onPointerLeft = [this] { tip.pointerLeft(); };
    window.onLetGo = [this] { platform::call(onLetGo); };
}

void DockedItem::redraw()
{
    const platform::StatusItemLook look = item.look();
    showTitle(look.title);
    window.paint(statusbar::itemPicture(look, window.size()));
}

void DockedItem::showTitle(const std::string& title)
{
    const QString text = QString::fromStdString(title);
    window.setTitle(text);
    tip.setText(text);
}

void DockedItem::pressed(std::uint8_t button, int rootX, int rootY)
{
    tip.pressed();
    if (button == XCB_BUTTON_INDEX_1 || button == XCB_BUTTON_INDEX_2) {
        item.activate();
    } else if (button == XCB_BUTTON_INDEX_3 && !item.menu().empty()) {
        showMenu(rootX, rootY);
    }
}

void DockedItem::showMenu(int rootX, int rootY)
{
    if (menu == nullptr) {
        menu = menuOf(item);
    }
    menu->popup(toolkitPlace(rootX, rootY));
}

} // namespace tray
