// Asks an item on a bus what a host asks. Main thread; turns the event loop while it waits.
#pragma once

#include "linux/dbus/SessionBus.h"
#include "qt/WaitFor.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QVariantMap>

#include <string>

class ItemClient
{
public:
    static constexpr auto ITEM = "org.kde.StatusNotifierItem";
    static constexpr auto MENU = "com.canonical.dbusmenu";

    ItemClient(const std::string& busAddress, const std::string& service)
        : bus(busAddress),
          service(QString::fromStdString(service))
    {
    }

    QDBusMessage call(const char* interface, const char* member, const QVariantList& arguments = {})
    {
        const QString path = QLatin1String(interface) == QLatin1String(MENU)
                                 ? QStringLiteral("/MenuBar")
                                 : QStringLiteral("/StatusNotifierItem");
        return callAt(path, interface, member, arguments);
    }

    QDBusMessage callAt(
        const QString& path,
        const char* interface,
        const char* member,
        const QVariantList& arguments
    )
    {
        QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, member);
        message.setArguments(arguments);
        const QDBusPendingCall pending = bus.connection().asyncCall(message);
        return support::waitFor([&] { return pending.isFinished(); }) ? pending.reply()
                                                                      : QDBusMessage();
    }

    QVariantMap properties()
    {
        const QDBusMessage reply =
            call("org.freedesktop.DBus.Properties", "GetAll", {QString::fromLatin1(ITEM)});
        return qdbus_cast<QVariantMap>(reply.arguments().value(0));
    }

    dbus::SessionBus bus;
    QString service;
};
