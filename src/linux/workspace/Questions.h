// What conclusions about instances depend on and only others can tell. Asked on the main thread.
#pragma once

#include "linux/workspace/Instance.h"

#include <functional>
#include <string>
#include <vector>

namespace workspace {

struct Questions
{
    /// Whether that very process still runs. Unset: all do.
    std::function<bool(pid_t pid, std::uint64_t startTime)> isAlive;

    /// The processes that an instance may have left behind. Unset: none.
    std::function<std::vector<proc::ProcessFacts>(const Instance& instance)> survivorsOf;

    /// Whether a process of one application may show the windows of the other. Unset: none.
    std::function<bool(const std::string& identifier, const std::string& other)> shareProgram;

    /// Whether a start of one application may leave its work to the other. Unset: none.
    std::function<bool(const std::string& identifier, const std::string& other)> mayHandOver;

    std::function<Clock::time_point()> now = Clock::now;
};

} // namespace workspace
