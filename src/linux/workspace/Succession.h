// Who leads an instance when a process of it is gone: the oldest one that is left or, of
// applications whose first process only starts the one that stays, a process that it left behind.
// Main thread.
#pragma once

#include "linux/workspace/InstanceList.h"
#include "linux/workspace/Questions.h"

#include <vector>

namespace workspace {

class Succession
{
public:
    /// Between an exec and the time when it is heard of.
    static constexpr std::chrono::seconds LONGEST_DELAY{5};

    /// Both must outlive this.
    Succession(const InstanceList& list, const Questions& ask) : list(list), ask(ask) {}

    /// Changes nothing while the leader is one of the processes.
    static void leadByOldest(Instance& instance);

    /// The first of these that may be the instance's child, and is nobody's, leads and is its only
    /// process. False, and nothing changed, when none is.
    bool takeOver(Instance& instance, const std::vector<proc::ProcessFacts>& survivors) const;

    /// True for an exec that is heard of only after its process was taken for what the instance
    /// left behind: what is left behind was forked off and executes nothing anew.
    bool isMistaken(const Instance& instance, const proc::ProcessFacts& facts) const;

private:
    const InstanceList& list;
    const Questions& ask;
};

} // namespace workspace
