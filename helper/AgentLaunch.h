// How the helper starts the agent. One thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace helper {

/// Where the agent stands, seen from the helper's own file: the helper lies inside its bundle.
std::string agentPath(const std::string& helperPath);

/// The program and one argument, which tells the agent that nobody asked to see it.
std::vector<std::string> agentArguments(const std::string& path, pid_t helperProcess);

/// `environment` without what speaks of the helper's own start.
std::vector<std::string> agentEnvironment(const std::vector<std::string>& environment);

/// Whether the agent started this process.
bool isStartedByAgent();

/// Starts the agent that belongs to this helper; nothing when that fails, and `problem` says why.
std::optional<pid_t> startAgent(std::string& problem);

} // namespace helper
