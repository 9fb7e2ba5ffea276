// One start of an application, from the exec of its leading process to the end of its last.
#pragma once

#include "linux/workspace/ApplicationIndex.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include <sys/types.h>

namespace workspace {

struct Instance
{
    KnownApplicationPtr application;
    std::uint64_t number = 0; // in order of appearance
    proc::ProcessFacts leader;
    std::map<pid_t, std::uint64_t> processes; // with their start times
    bool announced = false; // its start was reported, so its first window is to be, too
    bool windowShown = false;
};

using InstancePtr = std::shared_ptr<Instance>;

} // namespace workspace
