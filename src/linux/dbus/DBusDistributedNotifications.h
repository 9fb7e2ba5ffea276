// Notices as signals on the session bus: interface "com.quorvent.DistributedNotification", member
// "Posted", arguments name and object. Whoever only posts hears nothing of the others'. Main
// thread. Without a bus a notice is lost and one line says so.
#pragma once

#include "linux/dbus/SessionBus.h"
#include "platform/DistributedNotifications.h"
#include "platform/Log.h"

#include <QObject>
#include <QString>

#include <map>

namespace dbus {

class DBusDistributedNotifications final : public QObject, public platform::DistributedNotifications
{
    Q_OBJECT

public:
    DBusDistributedNotifications(const std::string& busAddress, platform::Log& log);

    void post(const std::string& name, const std::string& object) override;
    void observe(const std::string& name, Handler handler) override;

private:
    void listen(QDBusConnection& connection);
    Q_SLOT void posted(const QString& name, const QString& object);

    platform::Log& log;
    SessionBus bus;
    std::map<std::string, Handler> handlers;
    bool listening = false; // on the latest connection
};

} // namespace dbus
