// What the kernel says about one process at one moment. A value: whoever has a copy may change it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <sys/types.h>

namespace proc {

struct ProcessFacts
{
    pid_t pid = 0;
    pid_t parent = 0;
    int terminal = 0;    // device number of the controlling terminal, 0 for none
    bool isFork = false; // has executed nothing since it was forked off
    /// Clock ticks since boot; with the pid it names the process for good.
    std::uint64_t startTime = 0;
    std::string executable;             // absolute path, also of a file that was replaced meanwhile
    std::vector<std::string> arguments; // empty for one that ended while it was read
    std::string workingDirectory;       // empty when unknown
};

} // namespace proc
