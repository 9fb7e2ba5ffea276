// Makes starts and ends of applications, as a user sees them, out of those of processes and
// windows. Pure logic on the main thread: facts come in by calls, conclusions go out by the `on...`
// members, during the call. Here are the starts of processes; `ProcessEnds` and `WindowEvidence`
// conclude the rest.
#pragma once

#include "linux/workspace/AwaitedStarts.h"
#include "linux/workspace/HandOver.h"
#include "linux/workspace/InstanceList.h"
#include "linux/workspace/LaunchHints.h"
#include "linux/workspace/ProcessEnds.h"
#include "linux/workspace/Questions.h"
#include "linux/workspace/Sighting.h"
#include "linux/workspace/Succession.h"
#include "linux/workspace/WindowEvidence.h"

#include <functional>
#include <string>

namespace workspace {

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
    InstanceTracker();
    InstanceTracker(const InstanceTracker&) = delete;
    InstanceTracker& operator=(const InstanceTracker&) = delete;
    InstanceTracker(InstanceTracker&&) = delete;
    InstanceTracker& operator=(InstanceTracker&&) = delete;
    ~InstanceTracker() = default;

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

    Questions ask;

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
    bool joins(const Sighting& sighting);
    bool joinsTree(const Sighting& sighting);
    InstancePtr add(const Sighting& sighting);
    InstancePtr addByWindow(const Sighting& sighting, bool guest);
    void addProcess(Instance& instance, pid_t pid, std::uint64_t startTime) const;
    void announce(const InstancePtr& instance);
    void sayEnd(const Instance& instance);

    InstanceList list;
    LaunchHints hints;
    std::uint64_t latest = 0;
    AwaitedStarts awaited{list, ask};
    Succession succession{list};
    HandOver handOver{list, ask};
    ProcessEnds ends{list, ask, succession, handOver};
    WindowEvidence windows{list, ask, awaited};
};

} // namespace workspace
