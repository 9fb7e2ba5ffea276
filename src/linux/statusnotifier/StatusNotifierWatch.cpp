#include "linux/statusnotifier/StatusNotifierWatch.h"

#include "linux/process/LongestWait.h"
#include "platform/Call.h"

#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

#include <chrono>
#include <utility>

namespace statusnotifier {

namespace {

using Clock = std::chrono::steady_clock;

QDBusMessage whetherThereIsAHost()
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        WATCHER, WATCHER_PATH, "org.freedesktop.DBus.Properties", QStringLiteral("Get")
    );
    question << QString::fromLatin1(WATCHER) << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    return question;
}

} // namespace

StatusNotifierWatch::StatusNotifierWatch(const std::string& busAddress) : bus(busAddress)
{
    // Signals are not tied to their sender's name: the toolkit would ask the bus who that is, and
    // wait for it.
    bus.onConnected = [this](QDBusConnection& connection) {
        connection.connect(
            QString(),
            "/org/freedesktop/DBus",
            "org.freedesktop.DBus",
            "NameOwnerChanged",
            {QString::fromLatin1(WATCHER)},
            "sss",
            this,
            SLOT(watcherChanged(QString, QString, QString))
        );
        for (const char* signal :
             {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
            connection.connect(QString(), WATCHER_PATH, WATCHER, signal, this, SLOT(hostChanged()));
        }
        search.found(connection);
        ask(connection);
    };
    search.onLost = [this] { busLost(); };
    if (!busAddress.empty()) {
        search.begin();
    }
}

bool StatusNotifierWatch::hasHost()
{
    if (!std::exchange(settled, true)) {
        const auto begin = Clock::now();
        const QDBusConnection connection = bus.connection();
        const auto spent =
            std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin);
        if (connection.isConnected() && spent < process::LONGEST_WAIT) {
            askAndWait(connection, process::LONGEST_WAIT - spent);
        }
    }
    return host;
}

void StatusNotifierWatch::askAndWait(
    const QDBusConnection& connection, std::chrono::milliseconds longest
)
{
    const QDBusMessage reply = dbus::callWithin(longest, connection, whetherThereIsAHost());
    if (reply.type() == QDBusMessage::ReplyMessage) {
        ++question; // what was asked before is answered later, and older
        take(reply);
    }
}

void StatusNotifierWatch::watcherChanged(
    const QString& /*name*/, const QString& /*before*/, const QString& after
)
{
    if (after == owner) {
        return; // its answer came before the news
    }
    owner = after;
    ++question; // what the former watcher may still answer counts no more
    setHost(false);
    if (!owner.isEmpty()) {
        ask(bus.connection());
    }
}

void StatusNotifierWatch::hostChanged()
{
    ask(bus.connection());
}

void StatusNotifierWatch::busLost()
{
    owner.clear();
    ++question;
    setHost(false);
}

void StatusNotifierWatch::ask(const QDBusConnection& connection)
{
    auto* call = new QDBusPendingCallWatcher(connection.asyncCall(whetherThereIsAHost()), this);
    connect(
        call,
        &QDBusPendingCallWatcher::finished,
        this,
        [this, number = ++question](QDBusPendingCallWatcher* finished) {
            answered(finished, number);
        }
    );
}

void StatusNotifierWatch::answered(QDBusPendingCallWatcher* call, int number)
{
    call->deleteLater();
    if (number == question) {
        settled = true;
        take(call->reply());
    }
}

void StatusNotifierWatch::take(const QDBusMessage& reply)
{
    const bool answer = reply.type() == QDBusMessage::ReplyMessage;
    if (answer) {
        owner = reply.service();
    }
    setHost(answer && reply.arguments().value(0).value<QDBusVariant>().variant().toBool());
}

void StatusNotifierWatch::setHost(bool present)
{
    if (std::exchange(host, present) == present) {
        return;
    }
    platform::call(onChanged);
}

} // namespace statusnotifier
