#include "linux/dbus/DBusUserNotifications.h"

#include "linux/session/Programs.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <utility>

namespace dbus {

namespace {

constexpr auto SERVICE = "org.freedesktop.Notifications";
constexpr auto PATH = "/org/freedesktop/Notifications";

QDBusMessage call(const char* member)
{
    return QDBusMessage::createMethodCall(SERVICE, PATH, SERVICE, member);
}

QVariantMap hintsOf(const platform::UserNotification& notification)
{
    QVariantMap hints{{"desktop-entry", session::IDENTIFIER}};
    if (notification.defaultSound) {
        hints["sound-name"] = "message-new-instant";
    } else {
        hints["suppress-sound"] = true;
    }
    return hints;
}

QDBusMessage callFor(const platform::UserNotification& notification, bool withMarkup)
{
    constexpr unsigned NEW = 0;
    constexpr int AS_LONG_AS_USUAL = -1;
    const QString text = QString::fromStdString(notification.informativeText);
    QDBusMessage notify = call("Notify");
    notify << session::AGENT << NEW << session::IDENTIFIER
           << QString::fromStdString(notification.title)
           << (withMarkup ? text.toHtmlEscaped() : text) << QStringList() // nothing to do about it
           << hintsOf(notification) << AS_LONG_AS_USUAL;
    return notify;
}

using Answered = std::function<void(const QDBusMessage& reply)>;

void callLater(
    const QDBusConnection& connection, const QDBusMessage& call, QObject& owner, Answered answered
)
{
    auto* pending = new QDBusPendingCallWatcher(connection.asyncCall(call), &owner);
    QObject::connect(
        pending,
        &QDBusPendingCallWatcher::finished,
        &owner,
        [answered = std::move(answered)](QDBusPendingCallWatcher* finished) {
            finished->deleteLater();
            answered(finished->reply());
        }
    );
}

} // namespace

DBusUserNotifications::DBusUserNotifications(const std::string& busAddress, platform::Log& log)
    : log(log),
      bus(busAddress)
{
    bus.onConnected = [this](QDBusConnection& connection) {
        for (const auto& notification : std::exchange(waiting, {})) {
            send(connection, notification);
        }
    };
}

void DBusUserNotifications::deliver(const platform::UserNotification& notification)
{
    const QDBusConnection connection = bus.connection();
    if (connection.isConnected()) {
        send(connection, notification);
    } else if (bus.isConnecting()) {
        waiting.push_back(notification);
    } else {
        dropped(notification.title, QDBusMessage::createError("", "there is no session bus"));
    }
}

void DBusUserNotifications::send(
    const QDBusConnection& connection, const platform::UserNotification& notification
)
{
    // The text is plain; a service that reads markup would take parts of it for that.
    callLater(connection, call("GetCapabilities"), *this, [this, notification](const auto& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage) {
            dropped(notification.title, reply);
        } else {
            const QStringList capabilities = reply.arguments().value(0).toStringList();
            show(notification, capabilities.contains(QLatin1String("body-markup")));
        }
    });
}

void DBusUserNotifications::show(const platform::UserNotification& notification, bool withMarkup)
{
    const QDBusMessage notify = callFor(notification, withMarkup);
    callLater(
        bus.connection(),
        notify,
        *this,
        [this, title = notification.title](const auto& reply) {
            if (reply.type() == QDBusMessage::ErrorMessage) {
                dropped(title, reply);
            }
        }
    );
}

void DBusUserNotifications::dropped(const std::string& title, const QDBusMessage& error)
{
    log.diagnostic(
        "The notification \"" + title + "\" is not shown: " + error.errorMessage().toStdString()
    );
}

} // namespace dbus
