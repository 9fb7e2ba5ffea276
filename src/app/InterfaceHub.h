// The user interface as the delegate starts it: everything with a window hangs below it.
#pragma once

#include "platform/Port.h"

namespace app {

class InterfaceHub : public platform::Port
{
public:
    /// Puts the interface up.
    virtual void present() = 0;

    /// Opens the popover.
    virtual void showPopover() = 0;
};

} // namespace app
