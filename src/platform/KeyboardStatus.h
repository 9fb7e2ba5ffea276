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

    /// There is another layout to switch to.
    virtual bool hasSeveralLayouts() = 0;

    /// Makes the layout after the active one active, after the last the first; heard of like any
    /// other change. Does nothing where there is one alone.
    virtual void nextLayout() = 0;

    /// Calls `handler` after every change of any of these. One handler; an empty one takes it away.
    virtual void observe(std::function<void()> handler) = 0;
};

} // namespace platform
