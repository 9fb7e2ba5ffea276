#include "linux/dbus/BusSearch.h"

#include "platform/Call.h"

#include <algorithm>

namespace dbus {

namespace {

constexpr std::chrono::seconds FIRST_PAUSE(1);
constexpr std::chrono::seconds LONGEST_PAUSE(60);

} // namespace

BusSearch::BusSearch(SessionBus& bus) : bus(bus)
{
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, [this] { look(); });
}

void BusSearch::begin()
{
    pause = FIRST_PAUSE;
    bus.connectLater();
    timer.start(pause);
}

void BusSearch::look()
{
    pause = std::min(pause * 2, LONGEST_PAUSE);
    timer.start(pause);
    bus.connectLater(); // nothing where the former attempt still waits for an answer
}

void BusSearch::found(QDBusConnection& connection)
{
    timer.stop();
    connection.connect(
        QString(),
        "/org/freedesktop/DBus/Local",
        "org.freedesktop.DBus.Local",
        "Disconnected",
        this,
        SLOT(lost())
    );
}

void BusSearch::lost()
{
    pause = FIRST_PAUSE;
    timer.start(pause);
    platform::call(onLost);
}

} // namespace dbus
