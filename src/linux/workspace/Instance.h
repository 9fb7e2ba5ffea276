// One start of an application, from the exec of its leading process to the end of its last. Main
// thread only.
#pragma once

#include "linux/workspace/ApplicationIndex.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>

#include <sys/types.h>

namespace workspace {

using Clock = std::chrono::steady_clock;

struct Instance
{
    KnownApplicationPtr application;
    std::uint64_t number = 0; // in order of appearance
    proc::ProcessFacts leader;
    std::map<pid_t, std::uint64_t> processes; // with their start times
    std::set<std::uint64_t> windows;          // that it shows now
    bool windowShown = false;                 // now or before
    /// It shows windows of a process that another application was started as, and ends with those.
    bool guest = false;
    /// No process announced it.
    bool byWindow = false;
    /// Its leader was found when the last one ended.
    bool takenOver = false;
    /// It runs because of a start that was announced before its process was.
    bool expected = false;
    /// Its start was announced then, and no window has come of it yet.
    std::optional<Clock::time_point> awaited;
    std::optional<Clock::time_point> windowlessSince; // its last window went
};

using InstancePtr = std::shared_ptr<Instance>;

/// True of what runs in a terminal that the instance shows, whatever it executes.
inline bool hasOwnTerminal(const proc::ProcessFacts& facts, const Instance& instance)
{
    return facts.terminal != 0 && facts.terminal != instance.leader.terminal;
}

} // namespace workspace
