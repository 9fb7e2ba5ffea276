#include "linux/qt/AssistiveBridge.h"

#include <QAccessible>
#include <QByteArray>
#include <QCoreApplication>

namespace qt {

void leaveOutAssistiveBridge(QCoreApplication& application)
{
    constexpr auto ADDRESS = "DBUS_SESSION_BUS_ADDRESS";
    const bool isSet = qEnvironmentVariableIsSet(ADDRESS);
    const QByteArray before = qgetenv(ADDRESS);
    qputenv(ADDRESS, "disabled:"); // of no kind that there is: refused at once
    QAccessible::setRootObject(&application);
    if (isSet) {
        qputenv(ADDRESS, before);
    } else {
        qunsetenv(ADDRESS);
    }
}

} // namespace qt
