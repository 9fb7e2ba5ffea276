#include "linux/statusnotifier/PublishedItem.h"

#include "linux/statusnotifier/StatusNotifierWatch.h"

#include <QCoreApplication>

namespace statusnotifier {

namespace {

QString nextName()
{
    static int count = 0;
    return QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
        .arg(QCoreApplication::applicationPid())
        .arg(++count);
}

/// The bus handles both in this order, so that the watcher finds the name.
void registerWithWatcher(const QDBusConnection& connection, const QString& name)
{
    QDBusMessage claim = QDBusMessage::createMethodCall(
        "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName"
    );
    constexpr unsigned DO_NOT_QUEUE = 4;
    claim << name << DO_NOT_QUEUE;
    connection.send(claim);
    QDBusMessage registration = QDBusMessage::createMethodCall(
        WATCHER, WATCHER_PATH, WATCHER, "RegisterStatusNotifierItem"
    );
    registration << name;
    registration.setAutoStartService(false);
    connection.send(registration);
}

} // namespace

PublishedItem::PublishedItem(const std::string& busAddress, statusbar::ItemSource& item)
    : object(item),
      menu(item),
      bus(busAddress)
{
    bus.onConnected = [this](QDBusConnection& connection) {
        connection.registerVirtualObject(ITEM_PATH, &object);
        connection.registerVirtualObject(MENU_PATH, &menu);
        registerWithWatcher(connection, nextName());
    };
    bus.connectLater();
}

void PublishedItem::redraw()
{
    object.redraw(bus.connection());
}

void PublishedItem::menuChanged()
{
    menu.changed(bus.connection());
}

} // namespace statusnotifier
