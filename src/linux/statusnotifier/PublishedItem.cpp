#include "linux/statusnotifier/PublishedItem.h"

#include "linux/statusnotifier/StatusNotifierWatch.h"
#include "platform/Call.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusPendingCallWatcher>

namespace statusnotifier {

namespace {

QString nextName()
{
    static int count = 0;
    return QStringLiteral("org.kde.StatusNotifierItem-%1-%2")
        .arg(QCoreApplication::applicationPid())
        .arg(++count);
}

} // namespace

PublishedItem::PublishedItem(const std::string& busAddress, statusbar::ItemSource& item)
    : object(item),
      menu(item),
      bus(busAddress)
{
    bus.onConnected = [this](QDBusConnection& connection) { publish(connection); };
    bus.connectLater();
}

/// The bus handles claim and registration in this order, so that the watcher finds the name.
void PublishedItem::publish(QDBusConnection& connection)
{
    connection.registerVirtualObject(ITEM_PATH, &object);
    connection.registerVirtualObject(MENU_PATH, &menu);
    const QString name = nextName();
    claim(connection, name);
    registerWithWatcher(connection, name);
}

void PublishedItem::claim(const QDBusConnection& connection, const QString& name)
{
    QDBusMessage claim = QDBusMessage::createMethodCall(
        "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName"
    );
    constexpr unsigned DO_NOT_QUEUE = 4;
    claim << name << DO_NOT_QUEUE;
    followAnswer(connection.asyncCall(claim));
}

void PublishedItem::registerWithWatcher(const QDBusConnection& connection, const QString& name)
{
    QDBusMessage registration = QDBusMessage::createMethodCall(
        WATCHER, WATCHER_PATH, WATCHER, "RegisterStatusNotifierItem"
    );
    registration << name;
    registration.setAutoStartService(false);
    followAnswer(connection.asyncCall(registration));
}

void PublishedItem::followAnswer(const QDBusPendingCall& call)
{
    auto* const watcher = new QDBusPendingCallWatcher(call, &object);
    QObject::connect(
        watcher,
        &QDBusPendingCallWatcher::finished,
        &object,
        [this](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            if (finished->isError()) {
                platform::call(onRefused, finished->error().message().toStdString());
            }
        }
    );
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
