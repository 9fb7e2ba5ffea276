#include "linux/workspace/Survivors.h"

namespace workspace {

Survivors::Survivors(
    const InstanceList& instances,
    const ProcessSource& processes,
    const ApplicationIndex& applications,
    const SessionMembership& membership
)
    : instances(instances),
      processes(processes),
      applications(applications),
      membership(membership)
{
}

std::vector<proc::ProcessFacts> Survivors::of(const Instance& instance) const
{
    std::vector<proc::ProcessFacts> result = processes.executing(instance.leader.executable);
    std::erase_if(result, [&](const proc::ProcessFacts& facts) {
        return !isSame(facts, instance) || isForkOfAnother(facts, instance) ||
               isOfAnotherSession(facts, instance);
    });
    return result;
}

/// Of what executes the same file: the same application, or forked off and so with the same
/// arguments. An interpreter may execute anything.
bool Survivors::isSame(const proc::ProcessFacts& facts, const Instance& instance) const
{
    const KnownApplicationPtr application = applications.ofProcess(facts);
    return facts.arguments == instance.leader.arguments ||
           (application != nullptr && application->identifier == instance.application->identifier);
}

/// As the living instance that a second start handed over to may do just then, to execute something
/// else.
bool Survivors::isForkOfAnother(const proc::ProcessFacts& facts, const Instance& instance) const
{
    const InstancePtr owner = instances.ofProcess(facts.pid, processes.ancestorsOf(facts.pid));
    return owner != nullptr && owner.get() != &instance &&
           owner->application->identifier == instance.application->identifier;
}

/// What a window alone announced may name any session, and so may what it leaves behind.
bool Survivors::isOfAnotherSession(const proc::ProcessFacts& facts, const Instance& instance) const
{
    return !instance.byWindow && membership.isForeign(facts);
}

} // namespace workspace
