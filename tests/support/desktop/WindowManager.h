// The window manager of a test desktop: openbox, as Debian configures it.
#pragma once

#include "desktop/ChildProcess.h"
#include "desktop/XConnection.h"

namespace desktop {

class WindowManager
{
public:
    /// Returns when it manages windows; throws `Failure` when it does not come up.
    WindowManager(XConnection& connection, const Environment& environment);

private:
    ChildProcess process;
};

} // namespace desktop
