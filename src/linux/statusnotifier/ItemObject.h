// The item as hosts see it: org.kde.StatusNotifierItem. Main thread.
#pragma once

#include "linux/statusbar/StatusArea.h"
#include "linux/statusnotifier/BusObject.h"
#include "linux/statusnotifier/IconPixmap.h"

namespace statusnotifier {

inline constexpr auto ITEM_PATH = "/StatusNotifierItem";

class ItemObject final : public BusObject
{
public:
    /// Draws the item.
    explicit ItemObject(statusbar::ItemSource& item);

    /// Draws the item again and tells the hosts.
    void redraw(const QDBusConnection& connection);

private:
    QVariantMap properties() const override;
    void draw();

    statusbar::ItemSource& item;
    QString title;
    IconPixmaps icons;
};

} // namespace statusnotifier
