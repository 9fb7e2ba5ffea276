// How a command line of a desktop entry or a service shows in the processes that it starts. Any
// thread may call.
#pragma once

#include "linux/xdg/IdentityTable.h"
#include "linux/xdg/ProgramResolver.h"

#include <string>
#include <vector>

namespace xdg {

struct ExecutionKeys
{
    std::vector<ExecutionKey> keys;        // none where the command line names no program
    std::vector<std::string> interpreters; // of the scripts among them
};

/// `workingFolder`: where the line is executed, as far as its entry tells.
ExecutionKeys executionKeys(
    const std::string& exec, const ProgramResolver& programs, const std::string& workingFolder = {}
);

} // namespace xdg
