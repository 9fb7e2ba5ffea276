#include "linux/workspace/ProcessEnds.h"

#include "platform/Call.h"

#include <vector>

namespace workspace {

namespace {

bool contains(const Instance& instance, pid_t pid, std::uint64_t startTime)
{
    const auto found = instance.processes.find(pid);
    return found != instance.processes.end() && found->second == startTime;
}

} // namespace

ProcessEnds::ProcessEnds(
    InstanceList& list, const Questions& ask, const Succession& succession, const HandOver& handOver
)
    : list(list),
      ask(ask),
      succession(succession),
      handOver(handOver)
{
}

void ProcessEnds::processEnded(pid_t pid, std::uint64_t startTime)
{
    const std::vector<InstancePtr> instances = list.all();
    for (const InstancePtr& instance : instances) {
        if (contains(*instance, pid, startTime)) {
            ended.add(pid, startTime);
            settleLaterThan(*instance);
            leave(instance, pid);
        }
    }
}

bool ProcessEnds::wasHeardOf(pid_t pid, std::uint64_t startTime) const
{
    return ended.contains(pid, startTime);
}

void ProcessEnds::forgetEarlierOwner(const proc::ProcessFacts& facts)
{
    const InstancePtr earlier = list.ofProcess(facts.pid);
    if (earlier != nullptr && !contains(*earlier, facts.pid, facts.startTime)) {
        processEnded(facts.pid, earlier->processes[facts.pid]);
    }
}

void ProcessEnds::giveBack(const InstancePtr& instance, pid_t pid)
{
    instance->takenOver = false;
    instance->processes.erase(pid);
    if (instance->processes.empty()) {
        finish(instance);
    } else {
        Succession::leadByOldest(*instance);
    }
}

void ProcessEnds::settle()
{
    for (const auto& [pid, startTime] : processesOf([](const Instance&) { return true; })) {
        if (isGone(pid, startTime)) {
            processEnded(pid, startTime);
        }
    }
}

/// A start that handed over to the instance and ended is not to be taken for an end only because
/// both are gone by now.
void ProcessEnds::settleLaterThan(const Instance& instance)
{
    settleOthers([&](const Instance& other) {
        return other.number > instance.number && !other.windowShown &&
               other.application->identifier == instance.application->identifier;
    });
}

/// What an earlier one that is gone by now left behind is not the later one's.
void ProcessEnds::settleEarlierThan(const Instance& instance)
{
    settleOthers([&](const Instance& other) {
        return other.number < instance.number &&
               other.application->identifier == instance.application->identifier;
    });
}

/// The process whose end is just being told is none of them.
void ProcessEnds::settleOthers(const Matches& matches)
{
    for (const auto& [pid, startTime] : processesOf(matches)) {
        if (!ended.contains(pid, startTime) && isGone(pid, startTime)) {
            processEnded(pid, startTime);
        }
    }
}

std::vector<ProcessEnds::Process> ProcessEnds::processesOf(const Matches& matches) const
{
    std::vector<Process> result;
    for (const InstancePtr& instance : list.all()) {
        if (matches(*instance)) {
            result.insert(result.end(), instance->processes.begin(), instance->processes.end());
        }
    }
    return result;
}

bool ProcessEnds::isGone(pid_t pid, std::uint64_t startTime) const
{
    return ask.isAlive && !ask.isAlive(pid, startTime);
}

void ProcessEnds::leave(const InstancePtr& instance, pid_t pid)
{
    instance->processes.erase(pid);
    if (!instance->processes.empty()) {
        Succession::leadByOldest(*instance);
    } else if (!isTakenOver(*instance)) {
        finish(instance);
    }
}

bool ProcessEnds::isTakenOver(Instance& instance)
{
    const auto survivors =
        ask.survivorsOf ? ask.survivorsOf(instance) : std::vector<proc::ProcessFacts>{};
    if (!survivors.empty()) {
        settleEarlierThan(instance);
    }
    if (!succession.takeOver(instance, survivors)) {
        return false;
    }
    platform::call(onTakenOver, instance.leader.pid, instance.leader.startTime);
    return true;
}

void ProcessEnds::finish(const InstancePtr& instance)
{
    if (!instance->windowShown && handOver.becomesGuest(*instance)) {
        return;
    }
    list.remove(instance);
    const InstancePtr receiver = instance->windowShown ? nullptr : handOver.receiverOf(*instance);
    if (receiver == nullptr) {
        platform::call(onEnded, *instance);
        return;
    }
    if (receiver->windows.empty() && instance->awaited) {
        receiver->awaited = instance->awaited; // the window is to come from there
    }
    platform::call(onHandedOver, *instance);
}

} // namespace workspace
