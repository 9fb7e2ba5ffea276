#include "linux/workspace/SessionMembership.h"

#include <utility>

namespace workspace {

SessionMembership::SessionMembership(const ProcessSource& processes, GraphicalSession session)
    : processes(processes),
      session(std::move(session))
{
}

bool SessionMembership::isForeign(const proc::ProcessFacts& facts) const
{
    return isForeign(facts, processes.environmentOf(facts.pid), processes.ancestorsOf(facts.pid));
}

bool SessionMembership::isForeign(
    const proc::ProcessFacts& facts,
    const proc::ProcessEnvironment& environment,
    const std::vector<pid_t>& ancestors
) const
{
    const auto environmentsOfAncestors = [&] {
        std::vector<proc::ProcessEnvironment> result;
        result.reserve(ancestors.size());
        for (const pid_t ancestor : ancestors) {
            result.push_back(processes.environmentOf(ancestor));
        }
        return result;
    };
    return session.isForeign(environment, facts.arguments, environmentsOfAncestors);
}

} // namespace workspace
