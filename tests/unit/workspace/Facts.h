// Short ways to say which process, which application and which instance.
#pragma once

#include "linux/workspace/Instance.h"

#include <memory>
#include <string>

namespace workspace {

inline KnownApplicationPtr known(const std::string& identifier, bool shown = true)
{
    return std::make_shared<KnownApplication>(KnownApplication{
        .identifier = identifier,
        .name = "Name of " + identifier,
        .iconName = "icon-" + identifier,
        .bundlePath = "/Applications/" + identifier + ".app",
        .executable = "/usr/bin/" + identifier,
        .shown = shown,
    });
}

inline proc::ProcessFacts process(pid_t pid, const std::string& executable, int terminal = 0)
{
    return {
        .pid = pid,
        .parent = 1,
        .terminal = terminal,
        .startTime = static_cast<std::uint64_t>(pid) * 10,
        .executable = "/usr/bin/" + executable,
        .arguments = {executable},
        .workingDirectory = "/",
    };
}

/// What such a process has forked off.
inline proc::ProcessFacts forkOf(pid_t pid, const std::string& executable, int terminal = 0)
{
    proc::ProcessFacts result = process(pid, executable, terminal);
    result.isFork = true;
    return result;
}

/// The application's so-manyth instance, with this one process.
inline InstancePtr instance(std::uint64_t number, const std::string& identifier, pid_t pid)
{
    auto result = std::make_shared<Instance>();
    result->application = known(identifier);
    result->number = number;
    result->leader = process(pid, identifier);
    result->processes[pid] = result->leader.startTime;
    return result;
}

} // namespace workspace
