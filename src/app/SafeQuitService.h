// How the user ends an agent that protects: the helper is told first, so that it does not start the
// agent again.
#pragma once

namespace app {

class SafeQuitService
{
public:
    /// Tells the login-item helper to end, then ends this process with status 0. Never returns.
    [[noreturn]] static void quitApplication();
};

} // namespace app
