// Values of the menu protocol as they travel on the bus.
#pragma once

#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QVariantMap>

namespace statusnotifier {

/// (ia{sv}): an entry without its children.
struct MenuEntry
{
    int id = 0;
    QVariantMap properties;
};

using MenuEntries = QList<MenuEntry>;

/// (ia{sv}av): an entry with its children.
struct MenuLayout
{
    int id = 0;
    QVariantMap properties;
    QList<MenuLayout> children;
};

/// (isvu): something happened to an entry.
struct MenuEvent
{
    int id = 0;
    QString kind;
    QDBusVariant data;
    unsigned time = 0;
};

using MenuEvents = QList<MenuEvent>;

QDBusArgument& operator<<(QDBusArgument& argument, const MenuEntry& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEntry& entry);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event);

/// Before any of them is sent.
void registerMenuTypes();

} // namespace statusnotifier

Q_DECLARE_METATYPE(statusnotifier::MenuEntry)
Q_DECLARE_METATYPE(statusnotifier::MenuLayout)
Q_DECLARE_METATYPE(statusnotifier::MenuEvent)
