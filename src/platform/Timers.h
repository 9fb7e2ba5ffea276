// Timers of the main run loop. Main thread.
#pragma once

#include "platform/DispatchQueues.h"

namespace platform {

class Timers : public Port
{
public:
    /// Calls `block` on the main thread after `seconds`, and every `seconds` again when `repeats`.
    /// A scheduled timer cannot be taken back.
    virtual void scheduleTimer(double seconds, bool repeats, Block block) = 0;
};

} // namespace platform
