// Which processes belong to another graphical session, as they say themselves or, where they say
// nothing, their ancestors. Any thread.
#pragma once

#include "linux/workspace/GraphicalSession.h"
#include "linux/workspace/ProcessSource.h"

#include <vector>

namespace workspace {

class SessionMembership
{
public:
    /// `processes` must outlive this.
    SessionMembership(const ProcessSource& processes, GraphicalSession session);

    bool isForeign(const proc::ProcessFacts& facts) const;

    /// The same where it is known what the process was given, and by whom.
    bool isForeign(
        const proc::ProcessFacts& facts,
        const proc::ProcessEnvironment& environment,
        const std::vector<pid_t>& ancestors
    ) const;

private:
    const ProcessSource& processes;
    GraphicalSession session;
};

} // namespace workspace
