// The item's menu as hosts see it: com.canonical.dbusmenu. Entry 0 is the menu itself, the others
// count from 1 in their order. Main thread.
#pragma once

#include "linux/statusbar/StatusArea.h"
#include "linux/statusnotifier/BusObject.h"
#include "linux/statusnotifier/MenuLayout.h"

namespace statusnotifier {

inline constexpr auto MENU_PATH = "/MenuBar";

class MenuObject final : public BusObject
{
public:
    explicit MenuObject(statusbar::ItemSource& item);

    /// Tells the hosts to read the menu again.
    void changed(const QDBusConnection& connection);

private:
    QVariantMap properties() const override;
    bool has(int id) const;
    QVariantMap propertiesOf(int id) const;
    MenuLayout layoutOf(int id, int depth) const;
    MenuEntries entriesOf(const QList<int>& ids) const;
    void happened(int id, const QString& kind);

    /// The ids of those that there are not.
    QList<int> allHappened(const MenuEvents& events);
    void addReadingMethods();
    void addActingMethods();

    statusbar::ItemSource& item;
    unsigned revision = 1;
};

} // namespace statusnotifier
