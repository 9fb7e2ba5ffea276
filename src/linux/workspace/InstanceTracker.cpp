#include "linux/workspace/InstanceTracker.h"

#include <algorithm>
#include <utility>

namespace workspace {

namespace {

template <typename Callback, typename... Arguments>
void call(const Callback& callback, const Arguments&... arguments)
{
    const Callback copy = callback;
    if (copy) {
        copy(arguments...);
    }
}

} // namespace

void InstanceTracker::alreadyRunning(
    const proc::ProcessFacts& facts,
    const KnownApplicationPtr& application,
    const std::vector<pid_t>& ancestors
)
{
    if (!joins(facts, application, ancestors)) {
        add(facts, application);
    }
}

void InstanceTracker::processStarted(
    const proc::ProcessFacts& facts,
    const KnownApplicationPtr& application,
    const std::vector<pid_t>& ancestors
)
{
    if (!joins(facts, application, ancestors)) {
        const InstancePtr instance = add(facts, application);
        instance->announced = true;
        call(onStarted, *instance);
    }
}

/// True when the process belongs to an instance that is known already.
bool InstanceTracker::joins(
    const proc::ProcessFacts& facts,
    const KnownApplicationPtr& application,
    const std::vector<pid_t>& ancestors
)
{
    const InstancePtr own = instanceOf(facts.pid);
    if (own != nullptr) {
        const bool sameProcess = own->processes[facts.pid] == facts.startTime;
        if (sameProcess && own->application->identifier == application->identifier) {
            return true; // a wrapper that became what it wraps
        }
        leave(own, facts.pid); // it executes something else, or the identifier was used again
    }
    const InstancePtr parent = instanceOf(0, ancestors);
    if (parent == nullptr || parent->application->identifier != application->identifier) {
        return false;
    }
    if (facts.terminal != 0 && facts.terminal != parent->terminal) {
        return false; // typed by the user in a terminal that the instance itself shows
    }
    addProcess(*parent, facts.pid, facts.startTime);
    return true;
}

InstancePtr
InstanceTracker::add(const proc::ProcessFacts& facts, const KnownApplicationPtr& application)
{
    auto instance = std::make_shared<Instance>();
    instance->application = application;
    instance->number = ++latest;
    instance->leader = facts.pid;
    instance->leaderStartTime = facts.startTime;
    instance->executable = facts.executable;
    instance->terminal = facts.terminal;
    list.push_back(instance);
    addProcess(*instance, facts.pid, facts.startTime);
    return instance;
}

void InstanceTracker::addProcess(Instance& instance, pid_t pid, std::uint64_t startTime)
{
    instance.processes[pid] = startTime;
    call(onWatchWanted, pid, startTime);
}

void InstanceTracker::processEnded(pid_t pid, std::uint64_t startTime)
{
    const InstancePtr instance = instanceOf(pid);
    if (instance != nullptr && instance->processes[pid] == startTime) {
        leave(instance, pid);
    }
}

void InstanceTracker::leave(const InstancePtr& instance, pid_t pid)
{
    instance->processes.erase(pid);
    if (instance->processes.empty()) {
        call(onGraceWanted, instance);
        return;
    }
    if (instance->leader == pid) {
        const auto oldest = std::min_element(
            instance->processes.begin(),
            instance->processes.end(),
            [](const auto& left, const auto& right) { return left.second < right.second; }
        );
        instance->leader = oldest->first;
        instance->leaderStartTime = oldest->second;
    }
}

void InstanceTracker::graceOver(
    const InstancePtr& instance, const std::vector<proc::ProcessFacts>& survivors
)
{
    if (!instance->processes.empty()) {
        return; // somebody joined meanwhile
    }
    for (const proc::ProcessFacts& facts : survivors) {
        const bool couldBeAChild = facts.startTime >= instance->leaderStartTime;
        if (couldBeAChild && instanceOf(facts.pid) == nullptr) {
            instance->leader = facts.pid;
            instance->leaderStartTime = facts.startTime;
            addProcess(*instance, facts.pid, facts.startTime);
            return;
        }
    }
    finish(instance);
}

void InstanceTracker::finish(const InstancePtr& instance)
{
    if (std::erase(list, instance) == 0) {
        return;
    }
    const bool handedOver = !instance->windowShown && livesElsewhere(*instance);
    call(handedOver ? onHandedOver : onEnded, *instance);
}

bool InstanceTracker::livesElsewhere(const Instance& instance) const
{
    return std::any_of(list.begin(), list.end(), [&](const InstancePtr& other) {
        return other->application->identifier == instance.application->identifier &&
               other->number < instance.number && !other->processes.empty();
    });
}

void InstanceTracker::windowShown(const InstancePtr& instance)
{
    const bool first = !std::exchange(instance->windowShown, true);
    if (first && instance->announced) {
        call(onWindowShown, *instance);
    }
}

InstancePtr InstanceTracker::instanceOf(pid_t pid) const
{
    const auto found = std::find_if(list.begin(), list.end(), [&](const InstancePtr& instance) {
        return instance->processes.contains(pid);
    });
    return found == list.end() ? nullptr : *found;
}

InstancePtr InstanceTracker::instanceOf(pid_t pid, const std::vector<pid_t>& ancestors) const
{
    InstancePtr instance = instanceOf(pid);
    for (auto ancestor = ancestors.begin(); instance == nullptr && ancestor != ancestors.end();
         ++ancestor) {
        instance = instanceOf(*ancestor);
    }
    return instance;
}

} // namespace workspace
