#include "linux/workspace/Succession.h"

#include <algorithm>
#include <utility>

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
        const bool couldBeAChild = facts.startTime >= instance.leader.startTime;
        return couldBeAChild && !hasOwnTerminal(facts, instance) &&
               list.ofProcess(facts.pid) == nullptr;
    });
    if (heir == survivors.end()) {
        return false;
    }
    std::vector<std::string> arguments = std::move(instance.leader.arguments);
    instance.leader = *heir;
    if (heir->arguments.empty()) { // in the middle of an exec, perhaps of the same once more
        instance.leader.arguments = std::move(arguments);
    }
    instance.takenOver = ask.now();
    instance.processes[heir->pid] = heir->startTime;
    return true;
}

bool Succession::isMistaken(const Instance& instance, const proc::ProcessFacts& facts) const
{
    const proc::ProcessFacts& taken = instance.leader;
    return instance.takenOver && ask.now() - *instance.takenOver <= LONGEST_DELAY &&
           taken.pid == facts.pid && taken.executable == facts.executable &&
           taken.arguments == facts.arguments;
}

} // namespace workspace
