// Notifications by the desktop's service, org.freedesktop.Notifications. Main thread; nothing waits
// for the bus or the service. One that cannot be shown is dropped, and one line says so.
#pragma once

#include "linux/dbus/SessionBus.h"
#include "platform/Log.h"
#include "platform/UserNotifications.h"

#include <QObject>

#include <string>
#include <vector>

class QDBusMessage;

namespace dbus {

class DBusUserNotifications final : public QObject, public platform::UserNotifications
{
    Q_OBJECT

public:
    DBusUserNotifications(const std::string& busAddress, platform::Log& log);

    void deliver(const platform::UserNotification& notification) override;

private:
    void send(const QDBusConnection& connection, const platform::UserNotification& notification);
    void show(const platform::UserNotification& notification, bool withMarkup);
    void dropped(const std::string& title, const QDBusMessage& error);

    platform::Log& log;
    SessionBus bus;
    std::vector<platform::UserNotification> waiting; // for a bus that has not answered yet
};

} // namespace dbus
