#include "linux/workspace/InstanceTracker.h"

#include "platform/Call.h"

#include <algorithm>
#include <utility>

namespace workspace {

namespace {

bool contains(const Instance& instance, pid_t pid, std::uint64_t startTime)
{
    const auto found = instance.processes.find(pid);
    return found != instance.processes.end() && found->second == startTime;
}

} // namespace

void InstanceTracker::alreadyRunning(const Sighting& sighting)
{
    if (!joins(sighting)) {
        add(sighting);
    }
}

void InstanceTracker::processStarted(const Sighting& sighting)
{
    settle();
    // Two sources may tell of one start, and the second one only after the end.
    const auto process = std::pair(sighting.facts.pid, sighting.facts.startTime);
    if (std::find(ended.begin(), ended.end(), process) != ended.end()) {
        return;
    }
    if (!joins(sighting)) {
        announce(add(sighting));
    }
}

void InstanceTracker::announce(const InstancePtr& instance)
{
    instance->awaited = now();
    instance->expected = wasExpected(*instance);
    hints.erase(instance->application->identifier);
    platform::call(onStarted, *instance);
}

void InstanceTracker::processBecame(const proc::ProcessFacts& facts)
{
    forgetEarlierOwner(facts);
    const InstancePtr instance = list.ofProcess(facts.pid);
    if (instance != nullptr && instance->leader.pid == facts.pid) {
        instance->leader = facts;
    }
}

void InstanceTracker::childStarted(const proc::ProcessFacts& facts)
{
    const InstancePtr parent = list.ofProcess(facts.parent);
    if (parent != nullptr && list.ofProcess(facts.pid) == nullptr) {
        addProcess(*parent, facts.pid, facts.startTime);
    }
}

void InstanceTracker::settle()
{
    std::vector<std::pair<pid_t, std::uint64_t>> processes;
    for (const InstancePtr& instance : list.all()) {
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
    const InstancePtr earlier = list.ofProcess(facts.pid);
    if (earlier != nullptr && !contains(*earlier, facts.pid, facts.startTime)) {
        processEnded(facts.pid, earlier->processes[facts.pid]);
    }
}

/// True when the process belongs to an instance that is known already.
bool InstanceTracker::joins(const Sighting& sighting)
{
    const proc::ProcessFacts& facts = sighting.facts;
    const std::string& identifier = sighting.application->identifier;
    forgetEarlierOwner(facts);
    const InstancePtr own = list.ofProcess(facts.pid);
    if (own != nullptr && isStartOfItsOwn(*own, facts)) {
        giveBack(own, facts.pid);
    } else if (own != nullptr && own->application->identifier == identifier) {
        processBecame(facts); // a wrapper that became what it wraps
        return true;
    }
    if (joinsTree(sighting)) {
        return true;
    }
    // The service of an application that only asks the bus for it.
    const InstancePtr client = sighting.byBus ? awaitedOf(identifier) : nullptr;
    if (client == nullptr) {
        return false;
    }
    addProcess(*client, facts.pid, facts.startTime);
    return true;
}

/// Taken for what the last one left behind, because its exec was heard of only after that one's
/// end: what an instance leaves behind was forked off and executes nothing anew.
bool InstanceTracker::isStartOfItsOwn(const Instance& instance, const proc::ProcessFacts& facts)
    const
{
    const proc::ProcessFacts& taken = instance.leader;
    return instance.takenOver && now() - *instance.takenOver <= LONGEST_DELAY &&
           taken.pid == facts.pid && taken.executable == facts.executable &&
           taken.arguments == facts.arguments;
}

void InstanceTracker::giveBack(const InstancePtr& instance, pid_t pid)
{
    instance->takenOver.reset();
    instance->processes.erase(pid);
    if (instance->processes.empty()) {
        finish(instance);
    } else {
        leadByOldest(*instance);
    }
}

bool InstanceTracker::joinsTree(const Sighting& sighting)
{
    const proc::ProcessFacts& facts = sighting.facts;
    const InstancePtr parent = list.ofProcess(0, sighting.ancestors);
    if (parent == nullptr || parent->application->identifier != sighting.application->identifier) {
        return false;
    }
    // Typed by the user in a terminal that the instance itself shows, or chosen in its menu.
    const bool ownTerminal = facts.terminal != 0 && facts.terminal != parent->leader.terminal;
    if (ownTerminal || sighting.launched) {
        return false;
    }
    addProcess(*parent, facts.pid, facts.startTime);
    return true;
}

InstancePtr InstanceTracker::add(const Sighting& sighting)
{
    auto instance = std::make_shared<Instance>();
    instance->application = sighting.application;
    instance->number = ++latest;
    instance->leader = sighting.facts;
    list.add(instance);
    addProcess(*instance, sighting.facts.pid, sighting.facts.startTime);
    return instance;
}

void InstanceTracker::addProcess(Instance& instance, pid_t pid, std::uint64_t startTime) const
{
    if (pid == 0) {
        return; // a window of nobody here
    }
    instance.processes[pid] = startTime;
    platform::call(onWatchWanted, pid, startTime);
}

void InstanceTracker::processEnded(pid_t pid, std::uint64_t startTime)
{
    const std::vector<InstancePtr> instances = list.all();
    for (const InstancePtr& instance : instances) {
        if (contains(*instance, pid, startTime)) {
            remember(pid, startTime);
            settleLaterThan(*instance);
            leave(instance, pid);
        }
    }
}

/// A start that handed over to the instance and ended is not to be taken for an end only because
/// both are gone by now.
void InstanceTracker::settleLaterThan(const Instance& instance)
{
    settleOthers([&](const Instance& other) {
        return other.number > instance.number && !other.windowShown &&
               other.application->identifier == instance.application->identifier;
    });
}

/// What an earlier one that is gone by now left behind is not the later one's.
void InstanceTracker::settleEarlierThan(const Instance& instance)
{
    settleOthers([&](const Instance& other) {
        return other.number < instance.number &&
               other.application->identifier == instance.application->identifier;
    });
}

void InstanceTracker::settleOthers(const std::function<bool(const Instance& other)>& matches)
{
    std::vector<std::pair<pid_t, std::uint64_t>> processes;
    for (const InstancePtr& other : list.all()) {
        if (matches(*other)) {
            processes.insert(processes.end(), other->processes.begin(), other->processes.end());
        }
    }
    for (const auto& process : processes) {
        const bool known = std::find(ended.begin(), ended.end(), process) != ended.end();
        if (!known && isAlive && !isAlive(process.first, process.second)) {
            processEnded(process.first, process.second);
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
    leadByOldest(*instance);
}

void InstanceTracker::leadByOldest(Instance& instance)
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

/// Applications whose first process only starts the one that stays.
bool InstanceTracker::isTakenOver(Instance& instance)
{
    const auto survivors = survivorsOf ? survivorsOf(instance) : std::vector<proc::ProcessFacts>{};
    if (!survivors.empty()) {
        settleEarlierThan(instance);
    }
    for (const proc::ProcessFacts& facts : survivors) {
        const bool couldBeAChild = facts.startTime >= instance.leader.startTime;
        if (couldBeAChild && list.ofProcess(facts.pid) == nullptr) {
            instance.leader = facts;
            instance.takenOver = now();
            addProcess(instance, facts.pid, facts.startTime);
            return true;
        }
    }
    return false;
}

void InstanceTracker::finish(const InstancePtr& instance)
{
    if (!instance->windowShown && staysAsGuest(*instance)) {
        return;
    }
    list.remove(instance);
    const InstancePtr other = instance->windowShown ? nullptr : earlierThan(*instance, true);
    if (other == nullptr) {
        platform::call(onEnded, *instance);
        return;
    }
    if (other->windows.empty() && instance->awaited) {
        other->awaited = instance->awaited; // the window is to come from there
    }
    platform::call(onHandedOver, *instance);
}

/// Handed over to a process that runs as another application of the same program: that one will
/// show the window.
bool InstanceTracker::staysAsGuest(Instance& instance) const
{
    if (instance.guest || !instance.awaited || earlierThan(instance, true) != nullptr) {
        return false;
    }
    const InstancePtr host = earlierThan(instance, false);
    if (host == nullptr) {
        return false;
    }
    instance.guest = true;
    instance.leader = host->leader;
    instance.processes = host->processes;
    return true;
}

/// The latest one before it that may take over its start.
InstancePtr InstanceTracker::earlierThan(const Instance& instance, bool sameApplication) const
{
    const std::string& identifier = instance.application->identifier;
    return list.latestThat([&](const Instance& other) {
        const std::string& otherIdentifier = other.application->identifier;
        return other.number < instance.number &&
               (sameApplication
                    ? otherIdentifier == identifier
                    : shareProgram && !other.guest && shareProgram(identifier, otherIdentifier));
    });
}

InstancePtr InstanceTracker::startedByWindow(const Sighting& sighting)
{
    settle();
    const bool shares = isGuest(sighting);
    if (InstancePtr awaited = awaitedOf(sighting.application->identifier)) {
        addProcess(*awaited, sighting.facts.pid, sighting.facts.startTime);
        awaited->guest = awaited->guest || shares;
        return awaited;
    }
    InstancePtr instance = add(sighting);
    instance->guest = shares || sighting.facts.pid == 0;
    announce(instance);
    return instance;
}

InstancePtr InstanceTracker::runningByWindow(const Sighting& sighting)
{
    const bool shares = isGuest(sighting);
    InstancePtr instance = add(sighting);
    instance->guest = shares || sighting.facts.pid == 0;
    return instance;
}

bool InstanceTracker::isGuest(const Sighting& sighting) const
{
    const InstancePtr host = list.ofProcess(sighting.facts.pid, sighting.ancestors);
    return host != nullptr && shareProgram &&
           shareProgram(sighting.application->identifier, host->application->identifier);
}

void InstanceTracker::windowShown(const InstancePtr& instance, std::uint64_t window)
{
    for (const InstancePtr& other : std::vector<InstancePtr>(list.all())) {
        if (other != instance) {
            loseWindow(other, window); // it changed its class
        }
    }
    const bool appears = instance->windows.empty();
    if (!instance->windows.insert(window).second || !appears) {
        return;
    }
    const bool before = std::exchange(instance->windowShown, true);
    const auto since = std::exchange(instance->windowlessSince, std::nullopt);
    const InstancePtr awaited =
        isAwaited(*instance) ? instance : awaitedOf(instance->application->identifier);
    instance->awaited.reset();
    if (awaited != nullptr) {
        awaited->awaited.reset();
    } else if (before && since && now() - *since <= LONGEST_GAP) {
        return;
    } else {
        platform::call(onStartedAgain, *instance);
    }
    platform::call(onWindowShown, *instance);
    tellSameProcess(instance);
}

/// A process that executed one application after the other shows the window of both.
void InstanceTracker::tellSameProcess(const InstancePtr& instance) const
{
    for (const InstancePtr& other : std::vector<InstancePtr>(list.all())) {
        const bool same = other != instance && !other->guest && !instance->guest &&
                          other->leader.pid == instance->leader.pid;
        if (same && isAwaited(*other)) {
            other->awaited.reset();
            other->windowShown = true;
            platform::call(onWindowShown, *other);
        }
    }
}

void InstanceTracker::windowThere(const InstancePtr& instance, std::uint64_t window)
{
    instance->windows.insert(window);
    instance->windowShown = true;
}

void InstanceTracker::windowGone(std::uint64_t window)
{
    for (const InstancePtr& instance : std::vector<InstancePtr>(list.all())) {
        loseWindow(instance, window);
    }
}

void InstanceTracker::loseWindow(const InstancePtr& instance, std::uint64_t window)
{
    if (instance->windows.erase(window) == 0 || !instance->windows.empty()) {
        return;
    }
    instance->windowlessSince = now();
    if (instance->guest) {
        list.remove(instance);
        platform::call(onEnded, *instance);
    }
}

/// One that does not run yet is announced by its exec, a few milliseconds later.
void InstanceTracker::hinted(const std::string& identifier)
{
    const InstancePtr instance = list.latestOf(identifier);
    if (instance == nullptr || isAwaited(*instance)) {
        return;
    }
    hints[identifier] = now();
    if (instance->windows.empty()) {
        instance->awaited = now();
    }
    platform::call(onStartedAgain, *instance);
}

bool InstanceTracker::wasExpected(const Instance& instance) const
{
    const auto hint = hints.find(instance.application->identifier);
    return hint != hints.end() && now() - hint->second <= LONGEST_HINT;
}

bool InstanceTracker::isAwaited(const Instance& instance) const
{
    return instance.awaited && now() - *instance.awaited <= LONGEST_START;
}

InstancePtr InstanceTracker::awaitedOf(const std::string& identifier) const
{
    return list.latestThat([&](const Instance& instance) {
        return instance.application->identifier == identifier && isAwaited(instance);
    });
}

} // namespace workspace
