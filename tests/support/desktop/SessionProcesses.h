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

/// Children of this process, their children and so on, those included that keep their environment
/// to themselves; without those that have ended and that nobody waited for.
std::vector<pid_t> descendants();

/// From now on processes whose parents end become children of this one.
void adoptOrphans();

/// Ends all of them, also those that appear meanwhile.
void endProcessesOf(const std::filesystem::path& folder);

} // namespace desktop
