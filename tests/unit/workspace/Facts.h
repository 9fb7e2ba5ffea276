// Short ways to say which process and which application.
#pragma once

#include "linux/workspace/ApplicationIndex.h"

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
        .user = 1000,
        .terminal = terminal,
        .startTime = static_cast<std::uint64_t>(pid) * 10,
        .executable = "/usr/bin/" + executable,
        .arguments = {executable},
        .workingDirectory = "/",
    };
}

} // namespace workspace
