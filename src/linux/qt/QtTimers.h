// Timers of the main thread's event loop. What is still due when this object goes is dropped.
#pragma once

#include "platform/Timers.h"

#include <QObject>

namespace qt {

class QtTimers final : public platform::Timers
{
public:
    void scheduleTimer(double seconds, bool repeats, platform::Block block) override;

private:
    QObject timers; // their parent
};

} // namespace qt
