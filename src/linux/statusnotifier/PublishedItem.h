// An item that is on the bus, registered with the watcher. It has a connection of its own, with
// whose end everybody drops it. Main thread.
#pragma once

#include "linux/dbus/SessionBus.h"
#include "linux/statusbar/StatusArea.h"
#include "linux/statusnotifier/ItemObject.h"
#include "linux/statusnotifier/MenuObject.h"

#include <string>

namespace statusnotifier {

class PublishedItem final : public statusbar::Showing
{
public:
    PublishedItem(const std::string& busAddress, statusbar::ItemSource& item);

    void redraw() override;
    void menuChanged() override;

    /// Hosts do not tell.
    std::optional<platform::Rect> frame() const override { return std::nullopt; }

private:
    ItemObject object;
    MenuObject menu;
    dbus::SessionBus bus; // last: its end takes both objects away
};

} // namespace statusnotifier
