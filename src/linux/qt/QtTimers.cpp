#include "linux/qt/QtTimers.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace qt {

void QtTimers::scheduleTimer(double seconds, bool repeats, platform::Block block)
{
    const auto interval = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::duration<double>(std::max(seconds, 0.0))
    );
    auto* const timer = new QTimer(&timers);
    timer->setTimerType(Qt::PreciseTimer); // a coarse one may come 5 % late
    timer->setSingleShot(!repeats);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, repeats, block = std::move(block)] {
        if (!repeats) {
            timer->deleteLater();
        }
        block();
    });
    timer->start(interval);
}

} // namespace qt
