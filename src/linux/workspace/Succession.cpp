#include "linux/workspace/Succession.h"

#include <algorithm>

namespace workspace {

void Succession::leadByOldest(Instance& instance)
{
    if (instance.processes.contains(instance.leader.pid)) {
        return;
    }
    const auto oldest = std::min_element(
        instance.processes.begin(),
        instance.processes.end(),
        [](const auto& left, const auto& right) { return left.second < right.second; }
    );
    instance.leader.pid = oldest->first;
    instance.leader.startTime = oldest->second;
}

bool Succession::takeOver(Instance& instance, const std::vector<proc::ProcessFacts>& survivors)
    const
{
    const auto heir = std::find_if(survivors.begin(), survivors.end(), [&](const auto& facts) {
        return mayBeLeftBehind(facts, instance) && list.ofProcess(facts.pid) == nullptr;
    });
    if (heir == survivors.end()) {
        return false;
    }
    instance.leader = *heir;
    instance.takenOver = true;
    instance.processes[heir->pid] = heir->startTime;
    return true;
}

/// A child, that is, and none that runs in the instance's terminal. What has executed the very same
/// once more is a start of its own, and so may be what is in the middle of an exec: either is heard
/// of soon.
bool Succession::mayBeLeftBehind(const proc::ProcessFacts& facts, const Instance& instance)
{
    const proc::ProcessFacts& leader = instance.leader;
    const bool isStart =
        facts.arguments.empty() || (!facts.isFork && facts.arguments == leader.arguments);
    return facts.startTime >= leader.startTime && !isStart && !hasOwnTerminal(facts, instance);
}

} // namespace workspace
