// Keeps a bus connected: one that is lost, or not there yet, is looked for again after 1, 2, 4 ...
// 60 seconds, until it is found. While there is a bus nothing runs. Main thread.
#pragma once

#include "linux/dbus/SessionBus.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>

namespace dbus {

class BusSearch final : public QObject
{
    Q_OBJECT

public:
    /// The bus must outlive this.
    explicit BusSearch(SessionBus& bus);

    /// Connects, and does not wait.
    void begin();

    /// To be called with every connection that is made.
    void found(QDBusConnection& connection);

    /// The bus is gone. It is being looked for.
    std::function<void()> onLost;

private:
    Q_SLOT void lost();
    void look();

    SessionBus& bus;
    QTimer timer;
    std::chrono::seconds pause{0};
};

} // namespace dbus
