// This process: what it was started with, and its end. Main thread.
#pragma once

#include "platform/Port.h"

#include <string>
#include <vector>

namespace platform {

class ProcessInfo : public Port
{
public:
    /// The arguments, the program's path first.
    virtual std::vector<std::string> arguments() = 0;

    /// Ends the process with `status`; no service is cleaned up, but what adapters still have to
    /// write is waited for, a few seconds at most. Never returns.
    [[noreturn]] virtual void exit(int status) = 0;
};

} // namespace platform
