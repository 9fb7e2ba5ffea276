// Whether somebody shows status notifier items: a watcher that knows of a host. Followed as both
// come, go and come back, and the bus with them. Main thread.
#pragma once

#include "linux/dbus/BusSearch.h"
#include "linux/dbus/SessionBus.h"

#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <string>

class QDBusPendingCallWatcher;

namespace statusnotifier {

inline constexpr auto WATCHER = "org.kde.StatusNotifierWatcher";
inline constexpr auto WATCHER_PATH = "/StatusNotifierWatcher";

class StatusNotifierWatch final : public QObject
{
    Q_OBJECT

public:
    explicit StatusNotifierWatch(const std::string& busAddress);

    /// Never waits longer than 50 ms for the answer, and that once at most: until the watcher
    /// answers, nobody is there.
    bool hasHost();

    /// A watcher that is replaced by another takes its host with it first.
    std::function<void()> onChanged;

private:
    Q_SLOT void watcherChanged(const QString& name, const QString& before, const QString& after);
    Q_SLOT void hostChanged();
    void busLost();
    void ask(const QDBusConnection& connection);
    void askAndWait(const QDBusConnection& connection, std::chrono::milliseconds longest);
    void answered(QDBusPendingCallWatcher* call, int number);
    void take(const QDBusMessage& reply);
    void setHost(bool present);

    dbus::SessionBus bus;
    dbus::BusSearch search{bus};
    QString owner;        // of the watcher's name, as far as known
    int question = 0;     // number of the latest
    bool settled = false; // some question is answered, or was waited for long enough
    bool host = false;
};

} // namespace statusnotifier
