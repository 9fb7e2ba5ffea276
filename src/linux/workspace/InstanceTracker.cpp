#include "linux/workspace/InstanceTracker.h"

#include "platform/Call.h"

namespace workspace {

InstanceTracker::InstanceTracker()
{
    ends.onEnded = [this](const Instance& instance) { sayEnd(instance); };
    ends.onHandedOver = [this](const Instance& instance) {
        platform::call(onHandedOver, instance);
    };
    ends.onTakenOver = [this](pid_t pid, std::uint64_t startTime) {
        platform::call(onWatchWanted, pid, startTime);
    };
    windows.onStartedAgain = [this](const Instance& instance) {
        platform::call(onStartedAgain, instance);
    };
    windows.onWindowShown = [this](const Instance& instance) {
        platform::call(onWindowShown, instance);
    };
    windows.onEnded = [this](const Instance& instance) { sayEnd(instance); };
}

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
    if (ends.wasHeardOf(sighting.facts.pid, sighting.facts.startTime)) {
        return;
    }
    if (!joins(sighting)) {
        announce(add(sighting));
    }
}

void InstanceTracker::announce(const InstancePtr& instance)
{
    const std::string& identifier = instance->application->identifier;
    instance->awaited = ask.now();
    instance->expected = hints.announces(identifier, ask.now());
    hints.remove(identifier);
    platform::call(onStarted, *instance);
}

/// An end may lift the lock of any start that was announced. One that a launcher hinted at is
/// announced again by its exec; the next one of the same application, whose window is still to
/// come, at once.
void InstanceTracker::sayEnd(const Instance& instance)
{
    const std::string& identifier = instance.application->identifier;
    hints.clear();
    platform::call(onEnded, instance);
    const InstancePtr next = awaited.latestOf(identifier);
    if (next != nullptr && next->number > instance.number) {
        platform::call(onStartedAgain, *next);
    }
}

void InstanceTracker::processBecame(const proc::ProcessFacts& facts)
{
    ends.forgetEarlierOwner(facts);
    const InstancePtr instance = list.ofProcess(facts.pid);
    if (instance == nullptr || instance->leader.pid != facts.pid) {
        return;
    }
    if (instance->takenOver && hasOwnTerminal(facts, *instance)) {
        ends.giveBack(instance, facts.pid); // the terminal went before it had executed anything
    } else {
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

void InstanceTracker::processEnded(pid_t pid, std::uint64_t startTime)
{
    ends.processEnded(pid, startTime);
}

void InstanceTracker::settle()
{
    ends.settle();
}

/// True when the process belongs to an instance that is known already.
bool InstanceTracker::joins(const Sighting& sighting)
{
    const proc::ProcessFacts& facts = sighting.facts;
    const std::string& identifier = sighting.application->identifier;
    ends.forgetEarlierOwner(facts);
    const InstancePtr own = list.ofProcess(facts.pid);
    if (own != nullptr && Succession::isStart(facts, *own)) {
        ends.giveBack(own, facts.pid);
    } else if (own != nullptr && own->application->identifier == identifier) {
        processBecame(facts); // a wrapper that became what it wraps
        return true;
    }
    if (joinsTree(sighting)) {
        return true;
    }
    // The service of an application that only asks the bus for it.
    const InstancePtr client = sighting.byBus ? awaited.latestOf(identifier) : nullptr;
    if (client == nullptr) {
        return false;
    }
    addProcess(*client, facts.pid, facts.startTime);
    return true;
}

bool InstanceTracker::joinsTree(const Sighting& sighting)
{
    const proc::ProcessFacts& facts = sighting.facts;
    const InstancePtr parent = list.ofProcess(0, sighting.ancestors);
    if (parent == nullptr || parent->application->identifier != sighting.application->identifier) {
        return false;
    }
    // Typed by the user in a terminal that the instance itself shows, or chosen in its menu.
    if (hasOwnTerminal(facts, *parent) || sighting.launched) {
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

InstancePtr InstanceTracker::startedByWindow(const Sighting& sighting)
{
    settle();
    const bool guest = handOver.isGuest(sighting);
    if (InstancePtr start = awaited.latestOf(sighting.application->identifier)) {
        addProcess(*start, sighting.facts.pid, sighting.facts.startTime);
        start->guest = start->guest || guest;
        return start;
    }
    InstancePtr instance = addByWindow(sighting, guest);
    announce(instance);
    return instance;
}

InstancePtr InstanceTracker::runningByWindow(const Sighting& sighting)
{
    return addByWindow(sighting, handOver.isGuest(sighting));
}

InstancePtr InstanceTracker::addByWindow(const Sighting& sighting, bool guest)
{
    InstancePtr instance = add(sighting);
    instance->byWindow = true;
    instance->guest = guest || sighting.facts.pid == 0;
    return instance;
}

void InstanceTracker::windowShown(const InstancePtr& instance, std::uint64_t window)
{
    windows.shown(instance, window);
}

void InstanceTracker::windowThere(const InstancePtr& instance, std::uint64_t window)
{
    WindowEvidence::there(instance, window);
}

void InstanceTracker::windowGone(std::uint64_t window)
{
    windows.gone(window);
}

/// One that does not run yet is announced by its exec, a few milliseconds later.
void InstanceTracker::hinted(const std::string& identifier)
{
    settle();
    const InstancePtr instance = list.latestOf(identifier);
    if (instance == nullptr || awaited.contain(*instance)) {
        return;
    }
    // Of what shows nothing to the user nothing is announced but its window.
    if (!instance->application->shown && !instance->windowShown) {
        return;
    }
    hints.add(identifier, ask.now());
    if (instance->windows.empty()) {
        instance->awaited = ask.now();
    }
    platform::call(onStartedAgain, *instance);
}

} // namespace workspace
