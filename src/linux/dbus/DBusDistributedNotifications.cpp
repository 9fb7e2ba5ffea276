#include "linux/dbus/DBusDistributedNotifications.h"

#include "linux/process/LongestWait.h"
#include "linux/session/Notice.h"
#include "platform/Call.h"

#include <QDBusMessage>

#include <utility>

namespace dbus {

namespace {

/// For a bus that was not connected to so far: the poster may be about to end.
constexpr std::chrono::milliseconds LONGEST_WAIT_FOR_THE_BUS(500);

/// The bus takes the messages of a connection in order: once it answered, it has the notice.
void waitUntilTaken(const QDBusConnection& connection)
{
    const QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus.Peer"),
        QStringLiteral("Ping")
    );
    callWithin(process::LONGEST_WAIT, connection, question);
}

} // namespace

DBusDistributedNotifications::DBusDistributedNotifications(
    const std::string& busAddress, platform::Log& log
)
    : log(log),
      bus(busAddress)
{
    bus.onConnected = [this](QDBusConnection& connection) {
        listening = false;
        listen(connection);
    };
    bus.connectLater();
}

void DBusDistributedNotifications::listen(QDBusConnection& connection)
{
    if (listening || handlers.empty()) {
        return;
    }
    listening = connection.connect(
        QString(),
        QString(),
        session::NOTICE_INTERFACE,
        session::NOTICE_MEMBER,
        this,
        SLOT(posted(QString, QString))
    );
}

void DBusDistributedNotifications::post(const std::string& name, const std::string& object)
{
    const QDBusConnection connection = bus.connection(LONGEST_WAIT_FOR_THE_BUS);
    QDBusMessage notice = QDBusMessage::createSignal(
        session::NOTICE_PATH, session::NOTICE_INTERFACE, session::NOTICE_MEMBER
    );
    notice << QString::fromStdString(name) << QString::fromStdString(object);
    if (!connection.isConnected() || !connection.send(notice)) {
        log.diagnostic("There is no session bus; the notice " + name + " is lost");
        return;
    }
    waitUntilTaken(connection);
}

void DBusDistributedNotifications::observe(const std::string& name, Handler handler)
{
    handlers[name] = std::move(handler);
    QDBusConnection connection = bus.connection();
    if (connection.isConnected()) {
        listen(connection);
    } else if (!bus.isConnecting()) {
        log.diagnostic("There is no session bus; the notice " + name + " will not be heard");
    }
}

void DBusDistributedNotifications::posted(const QString& name, const QString& object)
{
    const auto found = handlers.find(name.toStdString());
    if (found != handlers.end()) {
        platform::call(found->second, name.toStdString(), object.toStdString());
    }
}

} // namespace dbus
