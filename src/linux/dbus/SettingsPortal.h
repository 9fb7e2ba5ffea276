// The appearance that the user chose for the desktop, as the settings portal tells it. Asked once,
// then followed, so that reading it never waits; a bus that was lost changes nothing until it is
// back. Main thread.
#pragma once

#include "linux/dbus/BusSearch.h"
#include "linux/dbus/SessionBus.h"

#include <QDBusVariant>
#include <QObject>
#include <QString>

#include <optional>
#include <string>

class QDBusPendingCallWatcher;

namespace dbus {

class SettingsPortal final : public QObject
{
    Q_OBJECT

public:
    explicit SettingsPortal(const std::string& busAddress);

    /// "Dark", or nothing: also while the portal has not answered, and where there is none.
    std::optional<std::string> interfaceStyle() const { return style; }

private:
    Q_SLOT void
    settingChanged(const QString& settingNamespace, const QString& key, const QDBusVariant& value);
    void ask(const QDBusConnection& connection);
    void answered(QDBusPendingCallWatcher* call);
    void take(const QVariant& colorScheme);

    SessionBus bus;
    BusSearch search{bus};
    std::optional<std::string> style;
};

} // namespace dbus
