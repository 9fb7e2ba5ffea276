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

bool contains(const Instance& instance, pid_t pid, std::uint64_t startTime)
{
    const auto found = instance.processes.find(pid);
    return found != instance.processes.end() && found->second == startTime;
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
    settle();
    // Two sources may tell of one start, and the second one only after the end.
    const auto process = std::pair(facts.pid, facts.startTime);
    if (std::find(ended.begin(), ended.end(), process) != ended.end()) {
        return;
    }
    if (!joins(facts, application, ancestors)) {
        const InstancePtr instance = add(facts, application);
        instance->announced = true;
        call(onStarted, *instance);
    }
}

void InstanceTracker::processBecame(const proc::ProcessFacts& facts)
{
    forgetEarlierOwner(facts);
    const InstancePtr instance = instanceOf(facts.pid);
    if (instance != nullptr && instance->leader.pid == facts.pid) {
        instance->leader = facts;
    }
}

void InstanceTracker::settle()
{
    std::vector<std::pair<pid_t, std::uint64_t>> processes;
    for (const InstancePtr& instance : list) {
        processes.insert(processes.end(), instance->processes.begin(), instance->processes.end());
    }
    for (const auto& [pid, startTime] : processes) {
        if (isAlive && !isAlive(pid, startTime)) {
            processEnded(pid, startTime);
        }
    }
}

/// A process identifier that was used again: whoever had it before is gone.
void InstanceTracker::forgetEarlierOwner(const proc::ProcessFacts& facts)
{
    const InstancePtr earlier = instanceOf(facts.pid);
    if (earlier != nullptr && !contains(*earlier, facts.pid, facts.startTime)) {
        processEnded(facts.pid, earlier->processes[facts.pid]);
    }
}

/// True when the process belongs to an instance that is known already.
bool InstanceTracker::joins(
    const proc::ProcessFacts& facts,
    const KnownApplicationPtr& application,
    const std::vector<pid_t>& ancestors
)
{
    forgetEarlierOwner(facts);
    const InstancePtr own = instanceOf(facts.pid);
    if (own != nullptr && own->application->identifier == application->identifier) {
        processBecame(facts); // a wrapper that became what it wraps
        return true;
    }
    const InstancePtr parent = instanceOf(0, ancestors);
    if (parent == nullptr || parent->application->identifier != application->identifier) {
        return false;
    }
    if (facts.terminal != 0 && facts.terminal != parent->leader.terminal) {
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
    instance->leader = facts;
    list.push_back(instance);
    addProcess(*instance, facts.pid, facts.startTime);
    return instance;
}

void InstanceTracker::addProcess(Instance& instance, pid_t pid, std::uint64_t startTime) const
{
    instance.processes[pid] = startTime;
    call(onWatchWanted, pid, startTime);
}

void InstanceTracker::processEnded(pid_t pid, std::uint64_t startTime)
{
    const std::vector<InstancePtr> instances = list;
    for (const InstancePtr& instance : instances) {
        if (contains(*instance, pid, startTime)) {
            remember(pid, startTime);
            leave(instance, pid);
        }
    }
}

void InstanceTracker::remember(pid_t pid, std::uint64_t startTime)
{
    constexpr std::size_t MOST_REMEMBERED = 64;
    ended.emplace_back(pid, startTime);
    if (ended.size() > MOST_REMEMBERED) {
        ended.pop_front();
    }
}

void InstanceTracker::leave(const InstancePtr& instance, pid_t pid)
{
    instance->processes.erase(pid);
    if (instance->processes.empty()) {
        if (!isTakenOver(*instance)) {
            finish(instance);
        }
        return;
    }
    if (instance->leader.pid == pid) {
        const auto oldest = std::min_element(
            instance->processes.begin(),
            instance->processes.end(),
            [](const auto& left, const auto& right) { return left.second < right.second; }
        );
        instance->leader.pid = oldest->first;
        instance->leader.startTime = oldest->second;
    }
}

/// Applications whose first process only starts the one that stays.
bool InstanceTracker::isTakenOver(Instance& instance)
{
    const auto survivors = survivorsOf ? survivorsOf(instance) : std::vector<proc::ProcessFacts>{};
    for (const proc::ProcessFacts& facts : survivors) {
        const bool couldBeAChild = facts.startTime >= instance.leader.startTime;
        if (couldBeAChild && instanceOf(facts.pid) == nullptr) {
            instance.leader = facts;
            addProcess(instance, facts.pid, facts.startTime);
            return true;
        }
    }
    return false;
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
               other->number < instance.number;
    });
}

void InstanceTracker::windowShown(const InstancePtr& instance) const
{
    const bool first = !std::exchange(instance->windowShown, true);
    if (first && instance->announced) {
        call(onWindowShown, *instance);
    }
}

InstancePtr InstanceTracker::instanceOf(pid_t pid) const
{
    const auto found = std::find_if(list.rbegin(), list.rend(), [&](const InstancePtr& instance) {
        return instance->processes.contains(pid);
    });
    return found == list.rend() ? nullptr : *found;
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
