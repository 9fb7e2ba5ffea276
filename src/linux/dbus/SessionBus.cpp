#include "linux/dbus/SessionBus.h"

#include "platform/Call.h"

#include <QFileInfo>

namespace dbus {

namespace {

QString nextName()
{
    static int count = 0;
    return QStringLiteral("tarvel-%1").arg(++count);
}

} // namespace

SessionBus::SessionBus(const std::string& address) : address(QString::fromStdString(address)) {}

SessionBus::~SessionBus()
{
    QDBusConnection::disconnectFromBus(name);
}

QDBusConnection SessionBus::connection()
{
    QDBusConnection current(name);
    if (!name.isEmpty() && current.isConnected()) {
        return current;
    }
    QDBusConnection::disconnectFromBus(name);
    name = nextName();
    QDBusConnection made = QDBusConnection::connectToBus(address, name);
    if (made.isConnected()) {
        platform::call(onConnected, made);
    }
    return made;
}

std::string sessionBusAddress()
{
    std::string named = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS").toStdString();
    if (!named.empty()) {
        return named;
    }
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return QFileInfo::exists(usual) ? "unix:path=" + usual.toStdString() : std::string();
}

} // namespace dbus
