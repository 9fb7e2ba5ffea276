// Tells the processes of this graphical session from those of another one of the same user. Pure.
#pragma once

#include "linux/proc/ProcRecords.h"

#include <string>
#include <vector>

namespace workspace {

struct GraphicalSession
{
    std::string display;        // of X11, as the environment names it; empty where unknown
    std::string waylandDisplay; // the same for Wayland

    /// True only for a process that was given another display and does not name this one: to leave
    /// the display out hides nothing.
    [[nodiscard]] bool isForeign(
        const proc::ProcessEnvironment& environment, const std::vector<std::string>& arguments
    ) const;
};

} // namespace workspace
