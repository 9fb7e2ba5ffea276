#include "linux/statusnotifier/ItemObject.h"

#include "linux/session/Programs.h"
#include "linux/statusbar/ItemPicture.h"
#include "linux/statusnotifier/MenuObject.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>

#include <array>

namespace statusnotifier {

namespace {

constexpr std::array SIDES{16, 22, 24, 32, 48}; // pixels

constexpr auto INTERFACE = "org.kde.StatusNotifierItem";
constexpr auto DESCRIPTION = R"XML(<interface name="org.kde.StatusNotifierItem">
<property name="Category" type="s" access="read"/>
<property name="Id" type="s" access="read"/>
<property name="Title" type="s" access="read"/>
<property name="Status" type="s" access="read"/>
<property name="WindowId" type="i" access="read"/>
<property name="IconThemePath" type="s" access="read"/>
<property name="IconName" type="s" access="read"/>
<property name="IconPixmap" type="a(iiay)" access="read"/>
<property name="OverlayIconName" type="s" access="read"/>
<property name="OverlayIconPixmap" type="a(iiay)" access="read"/>
<property name="AttentionIconName" type="s" access="read"/>
<property name="AttentionIconPixmap" type="a(iiay)" access="read"/>
<property name="AttentionMovieName" type="s" access="read"/>
<property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
<property name="ItemIsMenu" type="b" access="read"/>
<property name="Menu" type="o" access="read"/>
<method name="Activate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="SecondaryActivate"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="ContextMenu"><arg name="x" type="i" direction="in"/><arg name="y" type="i" direction="in"/></method>
<method name="Scroll"><arg name="delta" type="i" direction="in"/><arg name="orientation" type="s" direction="in"/></method>
<signal name="NewTitle"/>
<signal name="NewIcon"/>
<signal name="NewToolTip"/>
<signal name="NewStatus"><arg name="status" type="s"/></signal>
</interface>
)XML";

} // namespace

ItemObject::ItemObject(statusbar::ItemSource& item)
    : BusObject(INTERFACE, ITEM_PATH, DESCRIPTION),
      item(item)
{
    qDBusRegisterMetaType<IconPixmap>();
    qDBusRegisterMetaType<IconPixmaps>();
    qDBusRegisterMetaType<ToolTip>();
    const Method activate = [this](const QVariantList& /*place*/) {
        this->item.activate();
        return QVariantList();
    };
    const Method ignore = [](const QVariantList& /*arguments*/) { return QVariantList(); };
    addMethod("Activate", activate);
    addMethod("SecondaryActivate", activate);
    addMethod("ContextMenu", ignore); // hosts read the menu and show it themselves
    addMethod("Scroll", ignore);
    draw();
}

void ItemObject::redraw(const QDBusConnection& connection)
{
    draw();
    for (const char* name : {"NewIcon", "NewTitle", "NewToolTip"}) {
        connection.send(signal(name));
    }
}

QVariantMap ItemObject::properties() const
{
    const auto none = QVariant::fromValue(IconPixmaps());
    return {
        {"Category", "ApplicationStatus"},
        {"Id", session::IDENTIFIER},
        {"Title", title},
        {"Status", "Active"},
        {"WindowId", 0},
        {"IconThemePath", QString()},
        {"IconName", QString()}, // a name would be preferred to the picture
        {"IconPixmap", QVariant::fromValue(icons)},
        {"OverlayIconName", QString()},
        {"OverlayIconPixmap", none},
        {"AttentionIconName", QString()},
        {"AttentionIconPixmap", none},
        {"AttentionMovieName", QString()},
        {"ToolTip", QVariant::fromValue(ToolTip{{}, {}, title, {}})},
        {"ItemIsMenu", false},
        {"Menu", QVariant::fromValue(QDBusObjectPath(MENU_PATH))},
    };
}

void ItemObject::draw()
{
    const platform::StatusItemLook look = item.look();
    title = QString::fromStdString(look.title);
    icons.clear();
    for (const int side : SIDES) {
        icons.append(IconPixmap::of(statusbar::itemPicture(look, QSize(side, side))));
    }
}

} // namespace statusnotifier
