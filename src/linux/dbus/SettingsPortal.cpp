#include "linux/dbus/SettingsPortal.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace dbus {

namespace {

constexpr auto SERVICE = "org.freedesktop.portal.Desktop";
constexpr auto PATH = "/org/freedesktop/portal/desktop";
constexpr auto INTERFACE = "org.freedesktop.portal.Settings";
constexpr auto APPEARANCE = "org.freedesktop.appearance";
constexpr auto COLOR_SCHEME = "color-scheme";
constexpr unsigned PREFER_DARK = 1;

} // namespace

SettingsPortal::SettingsPortal(const std::string& busAddress) : bus(busAddress)
{
    qRegisterMetaType<QDBusVariant>(); // by its name, or the signal finds no slot for it
    bus.onConnected = [this](QDBusConnection& connection) {
        // Not tied to the portal's name: the toolkit would ask the bus who that is, and wait for
        // it.
        connection.connect(
            QString(),
            PATH,
            INTERFACE,
            QStringLiteral("SettingChanged"),
            this,
            SLOT(settingChanged(QString, QString, QDBusVariant))
        );
        search.found(connection);
        ask(connection);
    };
    if (!busAddress.empty()) {
        search.begin();
    }
}

void SettingsPortal::ask(const QDBusConnection& connection)
{
    QDBusMessage question =
        QDBusMessage::createMethodCall(SERVICE, PATH, INTERFACE, QStringLiteral("Read"));
    question << QString::fromLatin1(APPEARANCE) << QString::fromLatin1(COLOR_SCHEME);
    auto* call = new QDBusPendingCallWatcher(connection.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, &SettingsPortal::answered);
}

void SettingsPortal::answered(QDBusPendingCallWatcher* call)
{
    const QDBusPendingReply<QDBusVariant> reply = *call;
    if (!reply.isError()) {
        take(reply.value().variant());
    }
    call->deleteLater();
}

void SettingsPortal::settingChanged(
    const QString& settingNamespace, const QString& key, const QDBusVariant& value
)
{
    if (settingNamespace == APPEARANCE && key == COLOR_SCHEME) {
        take(value.variant());
    }
}

/// `Read` wraps the value in a variant once more than it should.
void SettingsPortal::take(const QVariant& colorScheme)
{
    const QVariant value = colorScheme.canConvert<QDBusVariant>()
                               ? colorScheme.value<QDBusVariant>().variant()
                               : colorScheme;
    style = value.toUInt() == PREFER_DARK ? std::optional<std::string>("Dark") : std::nullopt;
}

} // namespace dbus
