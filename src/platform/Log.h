// The two streams that the agent writes. Any thread may call; a line that fits a pipe
// is never torn.
#pragma once

#include "platform/Port.h"

#include <string_view>

namespace platform {

class Log : public Port
{
public:
    /// One line of the log proper, to standard output, without prefix.
    virtual void line(std::string_view text) = 0;

    /// Anything else that the user or a developer should know, one line to standard error.
    virtual void diagnostic(std::string_view text) = 0;
};

} // namespace platform
