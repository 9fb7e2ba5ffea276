#include "linux/statusnotifier/MenuObject.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QStringList>

#include <numeric>

namespace statusnotifier {

namespace {

constexpr int ROOT = 0;
constexpr unsigned PROTOCOL = 3;

constexpr auto INTERFACE = "com.canonical.dbusmenu";
constexpr auto DESCRIPTION = R"XML(<interface name="com.canonical.dbusmenu">
<property name="Version" type="u" access="read"/>
<property name="TextDirection" type="s" access="read"/>
<property name="Status" type="s" access="read"/>
<property name="IconThemePath" type="as" access="read"/>
<method name="GetLayout"><arg name="parentId" type="i" direction="in"/><arg name="recursionDepth" type="i" direction="in"/><arg name="propertyNames" type="as" direction="in"/><arg name="revision" type="u" direction="out"/><arg name="layout" type="(ia{sv}av)" direction="out"/></method>
<method name="GetGroupProperties"><arg name="ids" type="ai" direction="in"/><arg name="propertyNames" type="as" direction="in"/><arg name="properties" type="a(ia{sv})" direction="out"/></method>
<method name="GetProperty"><arg name="id" type="i" direction="in"/><arg name="name" type="s" direction="in"/><arg name="value" type="v" direction="out"/></method>
<method name="Event"><arg name="id" type="i" direction="in"/><arg name="eventId" type="s" direction="in"/><arg name="data" type="v" direction="in"/><arg name="timestamp" type="u" direction="in"/></method>
<method name="EventGroup"><arg name="events" type="a(isvu)" direction="in"/><arg name="idErrors" type="ai" direction="out"/></method>
<method name="AboutToShow"><arg name="id" type="i" direction="in"/><arg name="needUpdate" type="b" direction="out"/></method>
<method name="AboutToShowGroup"><arg name="ids" type="ai" direction="in"/><arg name="updatesNeeded" type="ai" direction="out"/><arg name="idErrors" type="ai" direction="out"/></method>
<signal name="ItemsPropertiesUpdated"><arg name="updatedProps" type="a(ia{sv})"/><arg name="removedProps" type="a(ias)"/></signal>
<signal name="LayoutUpdated"><arg name="revision" type="u"/><arg name="parent" type="i"/></signal>
<signal name="ItemActivationRequested"><arg name="id" type="i"/><arg name="timestamp" type="u"/></signal>
</interface>
)XML";

template <typename T> T argumentAt(const QVariantList& arguments, int place)
{
    return qdbus_cast<T>(arguments.value(place));
}

} // namespace

MenuObject::MenuObject(statusbar::ItemSource& item)
    : BusObject(INTERFACE, MENU_PATH, DESCRIPTION),
      item(item)
{
    registerMenuTypes();
    addReadingMethods();
    addActingMethods();
}

void MenuObject::changed(const QDBusConnection& connection)
{
    QDBusMessage updated = signal("LayoutUpdated");
    updated << ++revision << ROOT;
    connection.send(updated);
}

QVariantMap MenuObject::properties() const
{
    return {
        {"Version", PROTOCOL},
        {"TextDirection", QGuiApplication::isRightToLeft() ? "rtl" : "ltr"},
        {"Status", "normal"},
        {"IconThemePath", QStringList()},
    };
}

bool MenuObject::has(int id) const
{
    return id >= ROOT && static_cast<std::size_t>(id) <= item.menu().size();
}

QVariantMap MenuObject::propertiesOf(int id) const
{
    if (id == ROOT) {
        return {{"children-display", "submenu"}};
    }
    QString label = QString::fromStdString(item.menu()[static_cast<std::size_t>(id) - 1].title);
    label.replace('_', "__"); // a single one marks the letter that follows
    return {{"label", label}, {"enabled", true}, {"visible", true}};
}

/// To that depth below the entry; a negative one means all.
MenuLayout MenuObject::layoutOf(int id, int depth) const
{
    MenuLayout layout{id, propertiesOf(id), {}};
    const int count = static_cast<int>(item.menu().size());
    for (int child = 1; id == ROOT && depth != 0 && child <= count; ++child) {
        layout.children.append({child, propertiesOf(child), {}});
    }
    return layout;
}

/// None given means all.
MenuEntries MenuObject::entriesOf(const QList<int>& ids) const
{
    QList<int> wanted = ids;
    if (wanted.isEmpty()) {
        wanted.resize(static_cast<qsizetype>(item.menu().size()) + 1);
        std::iota(wanted.begin(), wanted.end(), ROOT);
    }
    MenuEntries entries;
    for (const int id : wanted) {
        if (has(id)) {
            entries.append({id, propertiesOf(id)});
        }
    }
    return entries;
}

void MenuObject::happened(int id, const QString& kind)
{
    if (id != ROOT && has(id) && kind == QLatin1String("clicked")) {
        item.choose(static_cast<std::size_t>(id) - 1);
    }
}

void MenuObject::addReadingMethods()
{
    addMethod("GetLayout", [this](const QVariantList& arguments) {
        const int id = argumentAt<int>(arguments, 0);
        const MenuLayout layout =
            has(id) ? layoutOf(id, argumentAt<int>(arguments, 1)) : MenuLayout{id, {}, {}};
        return QVariantList{revision, QVariant::fromValue(layout)};
    });
    addMethod("GetGroupProperties", [this](const QVariantList& arguments) {
        const auto ids = argumentAt<QList<int>>(arguments, 0);
        return QVariantList{QVariant::fromValue(entriesOf(ids))};
    });
    addMethod("GetProperty", [this](const QVariantList& arguments) {
        const int id = argumentAt<int>(arguments, 0);
        const QVariantMap all = has(id) ? propertiesOf(id) : QVariantMap();
        const QVariant value = all.value(argumentAt<QString>(arguments, 1), QString());
        return QVariantList{QVariant::fromValue(QDBusVariant(value))};
    });
}

QList<int> MenuObject::allHappened(const MenuEvents& events)
{
    QList<int> unknown;
    for (const MenuEvent& event : events) {
        happened(event.id, event.kind);
        if (!has(event.id)) {
            unknown.append(event.id);
        }
    }
    return unknown;
}

void MenuObject::addActingMethods()
{
    addMethod("Event", [this](const QVariantList& arguments) {
        happened(argumentAt<int>(arguments, 0), argumentAt<QString>(arguments, 1));
        return QVariantList();
    });
    addMethod("EventGroup", [this](const QVariantList& arguments) {
        const auto events = argumentAt<MenuEvents>(arguments, 0);
        return QVariantList{QVariant::fromValue(allHappened(events))};
    });
    // The menu is always up to date.
    addMethod("AboutToShow", [](const QVariantList& /*arguments*/) { return QVariantList{false}; });
    addMethod("AboutToShowGroup", [](const QVariantList& /*arguments*/) {
        const auto none = QVariant::fromValue(QList<int>());
        return QVariantList{none, none};
    });
}

} // namespace statusnotifier
