// Tells the processes of this graphical session from those of another one of the same user. Pure.
#pragma once

#include "linux/proc/ProcRecords.h"

#include <functional>
#include <string>
#include <vector>

namespace workspace {

struct GraphicalSession
{
    std::string display;        // of X11, as the environment names it; empty where unknown
    std::string waylandDisplay; // the same for Wayland

    /// Asked only where it matters, as it costs time. Unset: there are none.
    using Ancestors = std::function<std::vector<proc::ProcessEnvironment>()>;

    /// True only for a process that was given another display, or is part of what was, and that
    /// does not name this one: to leave the display out hides nothing.
    [[nodiscard]] bool isForeign(
        const proc::ProcessEnvironment& environment,
        const std::vector<std::string>& arguments,
        const Ancestors& ancestors
    ) const;

private:
    [[nodiscard]] bool isThis(const proc::ProcessEnvironment& environment) const;
    [[nodiscard]] bool areForeign(const std::vector<proc::ProcessEnvironment>& ancestors) const;
};

} // namespace workspace
