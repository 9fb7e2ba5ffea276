// The session bus, connected to when first needed and again after it was lost. Main thread.
#pragma once

#include <QDBusConnection>
#include <QString>

#include <functional>
#include <string>

namespace dbus {

class SessionBus
{
public:
    /// Called with every connection that is made, to listen on it.
    std::function<void(QDBusConnection& connection)> onConnected;

    /// Of the bus; see `sessionBusAddress`.
    explicit SessionBus(const std::string& address);
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    SessionBus(SessionBus&&) = delete;
    SessionBus& operator=(SessionBus&&) = delete;
    ~SessionBus();

    /// May be unconnected: then there is no bus, or none that answers.
    QDBusConnection connection();

private:
    QString address;
    QString name; // of the latest connection, empty before the first
};

/// Where this session has its bus: what the environment says, or the place where a session keeps
/// it. Empty when there is none.
std::string sessionBusAddress();

} // namespace dbus
