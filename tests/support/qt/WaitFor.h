// Turns the event loop until a condition holds. The deadline is there to fail, not to pace.
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <chrono>

namespace support {

template <typename Condition> bool waitFor(Condition&& condition)
{
    const QDeadlineTimer deadline(std::chrono::seconds(20));
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

} // namespace support
