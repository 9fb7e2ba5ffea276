// What a user who types blindly must know about the keyboard. Main thread only.
#pragma once

#include "platform/Port.h"

#include <functional>
#include <string>

namespace platform {

class KeyboardStatus : public Port
{
public:
    virtual bool capsLockOn() = 0;

    /// Short name of the active layout, such as "us"; empty when it is not known.
    virtual std::string layoutName() = 0;

    /// Calls `handler` after every change of either. One handler; an empty one takes it away.
    virtual void observe(std::function<void()> handler) = 0;
};

} // namespace platform
