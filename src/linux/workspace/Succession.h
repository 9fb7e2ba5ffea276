// Who leads an instance when a process of it is gone: the oldest one that is left or, of
// applications whose first process only starts the one that stays, a process that it left behind.
// Main thread.
#pragma once

#include "linux/workspace/InstanceList.h"

#include <vector>

namespace workspace {

class Succession
{
public:
    /// The list must outlive this.
    explicit Succession(const InstanceList& list) : list(list) {}

    /// Changes nothing while the leader is one of the processes.
    static void leadByOldest(Instance& instance);

    /// The first of these that may be the instance's child, and is nobody's, leads and is its only
    /// process. False, and nothing changed, when none is.
    bool takeOver(Instance& instance, const std::vector<proc::ProcessFacts>& survivors) const;

    /// Whether an exec of the fork that carries the instance on is a start of its own: of the very
    /// same once more. Anything else is what the fork was made for.
    static bool isStart(const proc::ProcessFacts& facts, const Instance& instance);

private:
    static bool mayBeLeftBehind(const proc::ProcessFacts& facts, const Instance& instance);

    const InstanceList& list;
};

} // namespace workspace
