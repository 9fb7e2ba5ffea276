// The processes that an instance may have left behind when its last one ended: they execute the
// same file as the same application, and are part of nothing else. Main thread.
#pragma once

#include "linux/workspace/ApplicationIndex.h"
#include "linux/workspace/InstanceList.h"
#include "linux/workspace/ProcessSource.h"
#include "linux/workspace/SessionMembership.h"

#include <vector>

namespace workspace {

class Survivors
{
public:
    /// All of them must outlive this.
    Survivors(
        const InstanceList& instances,
        const ProcessSource& processes,
        const ApplicationIndex& applications,
        const SessionMembership& membership
    );

    std::vector<proc::ProcessFacts> of(const Instance& instance) const;

private:
    bool isSame(const proc::ProcessFacts& facts, const Instance& instance) const;
    bool isForkOfAnother(const proc::ProcessFacts& facts, const Instance& instance) const;
    bool isOfAnotherSession(const proc::ProcessFacts& facts, const Instance& instance) const;

    const InstanceList& instances;
    const ProcessSource& processes;
    const ApplicationIndex& applications;
    const SessionMembership& membership;
};

} // namespace workspace
