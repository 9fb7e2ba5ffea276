// The session bus, connected to when first needed and again after it was lost. Connecting is done
// aside, since a bus may never answer; it then goes on until the bus does. Main thread.
#pragma once

#include "linux/process/LongestWait.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace dbus {

class SessionBus
{
public:
    /// What connecting may take before the caller goes on without.
    static constexpr std::chrono::milliseconds PATIENCE = process::LONGEST_WAIT_FOR_A_THREAD;

    /// Called with every connection that is made, to listen on it; within `connection`, or later
    /// when the bus took its time.
    std::function<void(QDBusConnection& connection)> onConnected;

    /// Of the bus; see `sessionBusAddress`.
    explicit SessionBus(const std::string& address);
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;
    SessionBus(SessionBus&&) = delete;
    SessionBus& operator=(SessionBus&&) = delete;
    ~SessionBus();

    /// Begins to connect where that is needed, and does not wait.
    void connectLater();

    /// May be unconnected: then there is no bus, or none that has answered yet. Waits once for the
    /// same attempt.
    QDBusConnection connection(std::chrono::milliseconds patience = PATIENCE);

    /// The bus is there and has not answered yet.
    bool isConnecting() const { return attempt != nullptr; }

private:
    struct Attempt;

    static void run(const std::shared_ptr<Attempt>& attempt); // a thread of its own
    void takeResult();

    QString address;
    QString name; // of the latest connection, empty before the first
    QDBusConnection current;
    std::shared_ptr<Attempt> attempt; // while one is under way
    bool waited = false;              // for that one
};

/// Where this session has its bus: what the environment says, or the place where a session keeps
/// it. Empty when there is none.
std::string sessionBusAddress();

/// The answer to a call, or an error when there is none in time. What was sent before is taken by
/// then, too.
QDBusMessage
callWithin(std::chrono::milliseconds time, const QDBusConnection& bus, const QDBusMessage& call);

} // namespace dbus
