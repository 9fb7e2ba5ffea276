// A process that was seen to execute an application, and how it came to that. A value: whoever
// has a copy may change it.
#pragma once

#include "linux/workspace/ApplicationIndex.h"

#include <vector>

#include <sys/types.h>

namespace workspace {

struct Sighting
{
    proc::ProcessFacts facts;
    KnownApplicationPtr application;
    std::vector<pid_t> ancestors; // the nearest first
    bool launched = false;        // by a launcher, as a start of its own
    bool byBus = false;           // on behalf of somebody else
};

} // namespace workspace
