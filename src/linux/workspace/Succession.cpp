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

bool Succession::isStart(const proc::ProcessFacts& facts, const Instance& instance)
{
    const proc::ProcessFacts& heir = instance.leader;
    return instance.takenOver && heir.pid == facts.pid && heir.isFork && !facts.isFork &&
           heir.executable == facts.executable && heir.arguments == facts.arguments;
}

/// A child that was forked off, that is, and does not run in the instance's terminal. What has
/// executed anything, or is about to have done so, is heard of by that.
bool Succession::mayBeLeftBehind(const proc::ProcessFacts& facts, const Instance& instance)
{
    const bool isFork = facts.isFork && !facts.arguments.empty();
    return isFork && facts.startTime >= instance.leader.startTime &&
           !hasOwnTerminal(facts, instance);
}

} // namespace workspace
