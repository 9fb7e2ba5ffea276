// The processes of a private desktop, those that nobody waits for included: known by the private
// folder that their environment names.
#pragma once

#include <filesystem>
#include <vector>

#include <sys/types.h>

namespace desktop {

/// Of this user, oldest first.
std::vector<pid_t> processesOf(const std::filesystem::path& folder);

/// Those of them that execute this file.
std::vector<pid_t>
processesOf(const std::filesystem::path& folder, const std::filesystem::path& executable);

/// Ends all of them, also those that appear meanwhile.
void endProcessesOf(const std::filesystem::path& folder);

} // namespace desktop
