// The one path by which the agent ends.
#pragma once

namespace app {

class SafeQuitService
{
public:
    /// Tells the login-item helper to end, then ends this process with status 0. Never returns.
    [[noreturn]] static void quitApplication();
};

} // namespace app
