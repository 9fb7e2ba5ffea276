// Makes starts and ends of applications, as a user sees them, out of those of processes and
// windows. Pure logic on the main thread: facts come in by calls, conclusions go out by the `on...`
// members, during the call.
#pragma once

#include "linux/workspace/InstanceList.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace workspace {

/// A process that executes an application.
struct Sighting
{
    proc::ProcessFacts facts;
    KnownApplicationPtr application;
    std::vector<pid_t> ancestors; // the nearest first
    bool launched = false;        // by a launcher, as a start of its own
    bool byBus = false;           // on behalf of somebody else
};

/// A process of an application's own tree is a helper of it and no start, unless it has a terminal
/// of its own or a launcher started it by itself; nor is the service that the bus starts for one. A
/// process that executes another application starts that one, too, and both end with it. When the
/// last process of an instance is gone, one that it left behind takes over. A start that finds a
/// living instance of the same program, shows no window and ends has handed over to that: it is no
/// end. An instance that appears though no start of it was announced starts then. An end is always
/// said before any later start, for the end of one application lifts a lock and must not lift that
/// of the next.
class InstanceTracker
{
public:
    /// A start whose first window comes later than that was forgotten meanwhile.
    static constexpr std::chrono::seconds LONGEST_START{60};
    /// Between two windows of one start, such as that of its progress and that of its work.
    static constexpr std::chrono::seconds LONGEST_GAP{5};
    /// Between a launcher's hint and the exec that it hints at.
    static constexpr std::chrono::seconds LONGEST_HINT{5};
    /// Between an exec and the time when it is heard of.
    static constexpr std::chrono::seconds LONGEST_DELAY{5};

    /// An application starts. Its process is still in exec.
    std::function<void(const Instance& instance)> onStarted;

    /// One that runs already is about to show itself, or does so: a start to the user.
    std::function<void(const Instance& instance)> onStartedAgain;

    /// The first window of an instance whose start was reported.
    std::function<void(const Instance& instance)> onWindowShown;

    /// The instance is gone from the list already.
    std::function<void(const Instance& instance)> onEnded;

    /// A start that handed over is gone from the list.
    std::function<void(const Instance& instance)> onHandedOver;

    /// The end of this process is to be reported by `processEnded`.
    std::function<void(pid_t pid, std::uint64_t startTime)> onWatchWanted;

    /// Asked whether that very process still runs. Unset: all do.
    std::function<bool(pid_t pid, std::uint64_t startTime)> isAlive;

    /// Asked for the processes that an instance may have left behind. Unset: none.
    std::function<std::vector<proc::ProcessFacts>(const Instance& instance)> survivorsOf;

    /// Asked whether a process of one application may show the windows of the other. Unset: none.
    std::function<bool(const std::string& identifier, const std::string& other)> shareProgram;

    std::function<Clock::time_point()> now = Clock::now;

    /// What ran before this program: listed without any conclusion.
    void alreadyRunning(const Sighting& sighting);

    void processStarted(const Sighting& sighting);

    /// A known process executes something that is no application: it stays what it is.
    void processBecame(const proc::ProcessFacts& facts);

    /// A process that is no application by itself, but does the work of its parent.
    void childStarted(const proc::ProcessFacts& facts);

    void processEnded(pid_t pid, std::uint64_t startTime);

    /// The instance that shows such windows in the process, which is known as no part of one: a
    /// start that is under way, or one that nothing announced. Without a process it ends with its
    /// last window.
    InstancePtr startedByWindow(const Sighting& sighting);
    InstancePtr runningByWindow(const Sighting& sighting);

    void windowShown(const InstancePtr& instance, std::uint64_t window);

    /// The window was there before this program.
    static void windowThere(const InstancePtr& instance, std::uint64_t window);

    void windowGone(std::uint64_t window);

    /// A launcher says that it is about to start the application.
    void hinted(const std::string& identifier);

    const InstanceList& instances() const { return list; }

    /// Says what ended without being heard of.
    void settle();

private:
    void forgetEarlierOwner(const proc::ProcessFacts& facts);
    bool joins(const Sighting& sighting);
    bool isStartOfItsOwn(const Instance& instance, const proc::ProcessFacts& facts) const;
    void giveBack(const InstancePtr& instance, pid_t pid);
    bool joinsTree(const Sighting& sighting);
    InstancePtr add(const Sighting& sighting);
    void announce(const InstancePtr& instance);
    void addProcess(Instance& instance, pid_t pid, std::uint64_t startTime) const;
    void remember(pid_t pid, std::uint64_t startTime);
    void settleLaterThan(const Instance& instance);
    void settleEarlierThan(const Instance& instance);
    void settleOthers(const std::function<bool(const Instance& other)>& matches);
    void leave(const InstancePtr& instance, pid_t pid);
    static void leadByOldest(Instance& instance);
    bool isTakenOver(Instance& instance);
    void finish(const InstancePtr& instance);
    bool isGuest(const Sighting& sighting) const;
    bool staysAsGuest(Instance& instance) const;
    bool isAwaited(const Instance& instance) const;
    InstancePtr awaitedOf(const std::string& identifier) const;
    bool wasExpected(const Instance& instance) const;
    InstancePtr earlierThan(const Instance& instance, bool sameApplication) const;
    void tellSameProcess(const InstancePtr& instance) const;
    void loseWindow(const InstancePtr& instance, std::uint64_t window);

    InstanceList list;
    std::deque<std::pair<pid_t, std::uint64_t>> ended; // the latest ones
    std::map<std::string, Clock::time_point> hints;    // that were announced, by application
    std::uint64_t latest = 0;
};

} // namespace workspace
