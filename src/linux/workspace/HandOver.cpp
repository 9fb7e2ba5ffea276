#include "linux/workspace/HandOver.h"

namespace workspace {

InstancePtr HandOver::receiverOf(const Instance& instance) const
{
    return list.latestThat([&](const Instance& other) {
        return other.number < instance.number &&
               other.application->identifier == instance.application->identifier;
    });
}

InstancePtr HandOver::hostOf(const Instance& instance) const
{
    return list.latestThat([&](const Instance& other) {
        return other.number < instance.number && ask.mayHandOver && !other.guest &&
               ask.mayHandOver(instance.application->identifier, other.application->identifier);
    });
}

bool HandOver::becomesGuest(Instance& instance) const
{
    if (instance.guest || !instance.awaited || receiverOf(instance) != nullptr) {
        return false;
    }
    const InstancePtr host = hostOf(instance);
    if (host == nullptr) {
        return false;
    }
    instance.guest = true;
    instance.leader = host->leader;
    instance.processes = host->processes;
    return true;
}

bool HandOver::isGuest(const Sighting& sighting) const
{
    const InstancePtr host = list.ofProcess(sighting.facts.pid, sighting.ancestors);
    return host != nullptr && ask.shareProgram &&
           ask.shareProgram(sighting.application->identifier, host->application->identifier);
}

} // namespace workspace
