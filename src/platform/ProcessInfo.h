// This process: what it was started with, and its end.
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

    /// Ends the process at once with `status`; no service is cleaned up. Never returns.
    [[noreturn]] virtual void exit(int status) = 0;
};

} // namespace platform
