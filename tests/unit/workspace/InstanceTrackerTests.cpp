#include "Facts.h"
#include "linux/workspace/InstanceTracker.h"

#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workspace::Instance;
using workspace::known;
using workspace::process;

class InstanceTracker : public testing::Test
{
protected:
    InstanceTracker()
    {
        tracker.onStarted = note("started");
        tracker.onWindowShown = note("window");
        tracker.onEnded = note("ended");
        tracker.onHandedOver = note("handed over");
        tracker.survivorsOf = [this](const Instance&) { return survivors; };
        tracker.onStartedAgain = note("started again");
        tracker.now = [this] { return time; };
        tracker.shareProgram = [this](const std::string& one, const std::string& other) {
            return office.contains(one) && office.contains(other);
        };
        tracker.isAlive = [this](pid_t pid, std::uint64_t) { return !dead.contains(pid); };
    }

    std::function<void(const Instance&)> note(const std::string& what)
    {
        return [this, what](const Instance& instance) {
            said.push_back(what + " " + instance.application->identifier);
        };
    }

    void start(pid_t pid, const std::string& name, const std::vector<pid_t>& ancestors = {})
    {
        tracker.processStarted({process(pid, name), known(name), ancestors});
    }

    /// A window of the process appears.
    void show(pid_t pid, std::uint64_t window = 1)
    {
        tracker.windowShown(tracker.instances().ofProcess(pid), window);
    }

    /// A window appears that says it is the application's, in a process that does not.
    void showOf(pid_t pid, const std::string& name, std::uint64_t window)
    {
        const auto instance = tracker.instances().ofProcessAs(name, pid);
        tracker.windowShown(
            instance != nullptr
                ? instance
                : tracker.startedByWindow({process(pid, "soffice.bin"), known(name), {}}),
            window
        );
    }

    void end(pid_t pid) { tracker.processEnded(pid, static_cast<std::uint64_t>(pid) * 10); }

    workspace::InstanceTracker tracker;
    std::vector<std::string> said;
    std::vector<proc::ProcessFacts> survivors;
    std::set<pid_t> dead;
    std::set<std::string> office{"calc", "writer"};
    workspace::Clock::time_point time{std::chrono::hours(1)};
};

} // namespace

TEST_F(InstanceTracker, StartWindowAndEndAreReportedOnceEach)
{
    start(10, "mousepad");
    show(10);
    show(10);
    end(10);

    EXPECT_THAT(said, ElementsAre("started mousepad", "window mousepad", "ended mousepad"));
    EXPECT_THAT(tracker.instances().all(), IsEmpty());
}

TEST_F(InstanceTracker, ProcessThatDiesBeforeItsWindowHasEnded)
{
    start(10, "mousepad");
    end(10);

    EXPECT_THAT(said, ElementsAre("started mousepad", "ended mousepad"));
}

TEST_F(InstanceTracker, StartThatIsToldAgainAfterTheEndIsNone)
{
    start(10, "mousepad");
    end(10);
    start(10, "mousepad");

    EXPECT_THAT(said, ElementsAre("started mousepad", "ended mousepad"));
    EXPECT_THAT(tracker.instances().all(), IsEmpty());
}

TEST_F(InstanceTracker, SecondStartThatHandsOverIsAStartAndNoEnd)
{
    start(10, "mousepad");
    start(20, "mousepad");
    end(20);

    EXPECT_THAT(said, ElementsAre("started mousepad", "started mousepad", "handed over mousepad"));
    EXPECT_EQ(tracker.instances().all().size(), 1U);
}

TEST_F(InstanceTracker, SecondStartThatHandedOverIsNoEndWhenTheFirstsIsHeardOfBefore)
{
    start(10, "mousepad");
    show(10);
    start(20, "mousepad");
    dead = {10, 20};
    end(10);
    end(20);

    EXPECT_THAT(
        said,
        ElementsAre(
            "started mousepad",
            "window mousepad",
            "started mousepad",
            "handed over mousepad",
            "ended mousepad"
        )
    );
}

TEST_F(InstanceTracker, SurvivorOfTheFirstDoesNotTakeTheSecondOver)
{
    start(10, "mousepad");
    show(10);
    start(20, "mousepad");
    dead = {10, 20};
    survivors = {process(30, "mousepad")}; // forked off by the first, which was ended then
    end(20);
    survivors.clear();
    end(30);

    EXPECT_THAT(
        said,
        ElementsAre(
            "started mousepad",
            "window mousepad",
            "started mousepad",
            "handed over mousepad",
            "ended mousepad"
        )
    );
}

TEST_F(InstanceTracker, EndOfTheFirstWhileTheSecondLivesIsAnEnd)
{
    start(10, "xterm");
    start(20, "xterm");
    end(10);

    EXPECT_EQ(said.back(), "ended xterm");
    EXPECT_NE(tracker.instances().ofProcess(20), nullptr);
}

TEST_F(InstanceTracker, SecondInstanceThatShowedAWindowEndsAsOne)
{
    start(10, "xterm");
    start(20, "xterm");
    show(20);
    end(20);

    EXPECT_EQ(said.back(), "ended xterm");
}

TEST_F(InstanceTracker, ProcessOfTheOwnTreeIsAHelperAndNoStart)
{
    start(10, "firefox");
    start(11, "firefox", {10, 1});

    EXPECT_THAT(said, ElementsAre("started firefox"));
    EXPECT_EQ(tracker.instances().ofProcess(11), tracker.instances().ofProcess(10));
}

TEST_F(InstanceTracker, SameProgramOnATerminalOfTheTreeIsAStart)
{
    start(10, "xterm");
    tracker.processStarted({process(30, "xterm", 34816), known("xterm"), {20, 10, 1}});

    EXPECT_THAT(said, ElementsAre("started xterm", "started xterm"));
    EXPECT_EQ(tracker.instances().all().size(), 2U);
}

TEST_F(InstanceTracker, AnotherApplicationInTheTreeIsAStart)
{
    start(10, "xterm");
    start(30, "mousepad", {20, 10, 1});

    EXPECT_THAT(said, ElementsAre("started xterm", "started mousepad"));
}

TEST_F(InstanceTracker, WrapperThatBecomesItsProgramIsOneStart)
{
    start(10, "firefox");
    tracker.processStarted({process(10, "firefox-bin"), known("firefox"), {}});

    EXPECT_THAT(said, ElementsAre("started firefox"));
}

TEST_F(InstanceTracker, ProcessThatExecutesAnotherApplicationIsBothUntilItEnds)
{
    start(10, "uxterm");
    start(10, "xterm");

    EXPECT_THAT(said, ElementsAre("started uxterm", "started xterm"));
    EXPECT_EQ(tracker.instances().ofProcess(10)->application->identifier, "xterm");
    end(10);
    EXPECT_THAT(
        said, ElementsAre("started uxterm", "started xterm", "ended uxterm", "ended xterm")
    );
}

TEST_F(InstanceTracker, ProcessThatExecutedTwoApplicationsShowsTheWindowOfBoth)
{
    start(10, "uxterm");
    start(10, "xterm");
    tracker.windowShown(tracker.instances().ofProcessAs("uxterm", 10), 1);

    EXPECT_THAT(
        said, ElementsAre("started uxterm", "started xterm", "window uxterm", "window xterm")
    );
}

TEST_F(InstanceTracker, EndThatWasNotHeardOfYetIsSaidBeforeTheNextStart)
{
    start(10, "mousepad");
    dead.insert(10);
    start(20, "xterm");

    EXPECT_THAT(said, ElementsAre("started mousepad", "ended mousepad", "started xterm"));
}

TEST_F(InstanceTracker, RestartOfAnApplicationIsNoHandOverToTheOneThatEnded)
{
    start(10, "mousepad");
    dead.insert(10);
    start(20, "mousepad");
    end(20);

    EXPECT_THAT(
        said,
        ElementsAre("started mousepad", "ended mousepad", "started mousepad", "ended mousepad")
    );
}

TEST_F(InstanceTracker, WrapperThatBecomesAProgramOfNobodyStaysTheApplication)
{
    start(10, "wrapper");
    tracker.processBecame(process(10, "real-program"));

    EXPECT_THAT(said, ElementsAre("started wrapper"));
    EXPECT_EQ(tracker.instances().ofProcess(10)->leader.executable, "/usr/bin/real-program");
}

TEST_F(InstanceTracker, ReusedProcessIdentifierIsAnotherProcess)
{
    start(10, "mousepad");
    proc::ProcessFacts later = process(10, "mousepad");
    later.startTime = 999;
    tracker.processStarted({later, known("mousepad"), {}});

    EXPECT_THAT(said, ElementsAre("started mousepad", "ended mousepad", "started mousepad"));
    tracker.processEnded(10, 100);
    EXPECT_NE(tracker.instances().ofProcess(10), nullptr)
        << "the end of the earlier one must not count";
}

TEST_F(InstanceTracker, SurvivorOfTheSameExecutableTakesOver)
{
    start(10, "thunar");
    survivors = {process(11, "thunar")};
    end(10);

    EXPECT_THAT(said, ElementsAre("started thunar"));
    EXPECT_EQ(tracker.instances().ofProcess(11)->leader.pid, 11);
    survivors.clear();
    end(11);
    EXPECT_EQ(said.back(), "ended thunar");
}

TEST_F(InstanceTracker, StartRightAfterAnEndIsNoSurvivorThoughItsExecIsHeardOfLater)
{
    start(10, "xterm");
    show(10);
    said.clear();
    survivors = {process(11, "xterm")};
    end(10);
    survivors.clear();
    start(11, "xterm");

    EXPECT_THAT(said, ElementsAre("ended xterm", "started xterm"));
    EXPECT_EQ(tracker.instances().all().size(), 1U);
    end(11);
    EXPECT_EQ(said.back(), "ended xterm");
}

TEST_F(InstanceTracker, SurvivorThatExecutesSomethingElseStaysWhatItIs)
{
    start(10, "thunar");
    survivors = {process(11, "thunar")};
    end(10);
    proc::ProcessFacts real = process(11, "thunar");
    real.executable = "/usr/lib/thunar/real";
    tracker.processStarted({real, known("thunar"), {}});

    EXPECT_THAT(said, ElementsAre("started thunar"));
}

TEST_F(InstanceTracker, SurvivorThatIsSeenAgainLongAfterwardsIsNoStart)
{
    start(10, "thunar");
    survivors = {process(11, "thunar")};
    end(10);
    time += workspace::InstanceTracker::LONGEST_DELAY + std::chrono::seconds(1);
    start(11, "thunar"); // among all that runs, after events were lost

    EXPECT_THAT(said, ElementsAre("started thunar"));
}

TEST_F(InstanceTracker, OlderProcessOfTheSameExecutableIsNoSurvivor)
{
    start(10, "thunar");
    survivors = {process(9, "thunar")};
    end(10);

    EXPECT_EQ(said.back(), "ended thunar");
}

TEST_F(InstanceTracker, LastProcessEndsTheInstanceAndTheOldestLeadsMeanwhile)
{
    start(10, "soffice");
    start(12, "soffice", {10});
    start(11, "soffice", {10});
    end(10);

    EXPECT_EQ(tracker.instances().ofProcess(11)->leader.pid, 11);
    end(11);
    EXPECT_THAT(said, ElementsAre("started soffice"));
    end(12);
    EXPECT_EQ(said.back(), "ended soffice");
}

TEST_F(InstanceTracker, WhatRanBeforeIsListedAndItsWindowsAreNoNews)
{
    tracker.alreadyRunning({process(10, "mousepad"), known("mousepad"), {}});
    tracker.windowThere(tracker.instances().ofProcess(10), 1);
    show(10, 2);

    EXPECT_THAT(said, IsEmpty());
    EXPECT_EQ(tracker.instances().all().size(), 1U);
    end(10);
    EXPECT_THAT(said, ElementsAre("ended mousepad"));
}

TEST_F(InstanceTracker, EveryProcessOfAnInstanceIsWatched)
{
    std::vector<pid_t> watched;
    tracker.onWatchWanted = [&](pid_t pid, std::uint64_t) { watched.push_back(pid); };

    start(10, "thunar");
    start(11, "thunar", {10});
    end(10);
    survivors = {process(12, "thunar")};
    end(11);

    EXPECT_THAT(watched, ElementsAre(10, 11, 12));
}

TEST_F(InstanceTracker, ProcessIsFoundByItsNearestAncestor)
{
    start(10, "xterm");
    start(30, "mousepad", {20, 10});

    EXPECT_EQ(tracker.instances().ofProcess(31, {30, 20, 10})->application->identifier, "mousepad");
    EXPECT_EQ(tracker.instances().ofProcess(21, {20, 10})->application->identifier, "xterm");
    EXPECT_EQ(tracker.instances().ofProcess(40, {1}), nullptr);
}

TEST_F(InstanceTracker, WhatRanHiddenBeforeStartsWithItsFirstWindow)
{
    tracker.alreadyRunning({process(10, "mousepad"), known("mousepad"), {}});
    show(10);

    EXPECT_THAT(said, ElementsAre("started again mousepad", "window mousepad"));
}

TEST_F(InstanceTracker, SecondWindowIsNoNews)
{
    start(10, "mousepad");
    show(10, 1);
    said.clear();
    show(10, 2);
    tracker.windowGone(1);
    show(10, 3);

    EXPECT_THAT(said, IsEmpty());
}

TEST_F(InstanceTracker, WindowAfterAWindowOfProgressIsNoNews)
{
    start(10, "gimp");
    show(10, 1);
    tracker.windowGone(1);
    time += std::chrono::seconds(3);
    said.clear();
    show(10, 2);

    EXPECT_THAT(said, IsEmpty());
}

TEST_F(InstanceTracker, HiddenInstanceThatAppearsStartsAgain)
{
    start(10, "keepassxc");
    show(10, 1);
    tracker.windowGone(1);
    time += std::chrono::seconds(30);
    said.clear();
    show(10, 2);

    EXPECT_THAT(said, ElementsAre("started again keepassxc", "window keepassxc"));
}

TEST_F(InstanceTracker, WindowLongAfterTheStartIsAStartOfItsOwn)
{
    start(10, "service");
    time += std::chrono::minutes(10);
    said.clear();
    show(10, 1);

    EXPECT_THAT(said, ElementsAre("started again service", "window service"));
}

TEST_F(InstanceTracker, HandOverToAHiddenInstanceIsOneStart)
{
    start(10, "service");
    time += std::chrono::minutes(10);
    start(20, "service");
    end(20);
    said.clear();
    show(10, 1);

    EXPECT_THAT(said, ElementsAre("window service"));
}

TEST_F(InstanceTracker, WindowMayComeBeforeTheStartHasHandedOver)
{
    start(10, "service");
    time += std::chrono::minutes(10);
    start(20, "service");
    said.clear();
    show(10, 1);
    end(20);

    EXPECT_THAT(said, ElementsAre("window service", "handed over service"));
}

TEST_F(InstanceTracker, ServiceThatTheBusStartsJoinsItsClient)
{
    start(10, "gnome-terminal");
    tracker.processStarted(
        {process(20, "gnome-terminal-server"), known("gnome-terminal"), {3}, false, true}
    );
    end(10);

    EXPECT_THAT(said, ElementsAre("started gnome-terminal"));
    EXPECT_EQ(tracker.instances().ofProcess(20)->leader.pid, 20);
    show(20);
    EXPECT_EQ(said.back(), "window gnome-terminal");
    end(20);
    EXPECT_EQ(said.back(), "ended gnome-terminal");
}

TEST_F(InstanceTracker, ServiceThatTheBusStartsForNobodyIsAStart)
{
    tracker.processStarted({process(20, "seahorse"), known("seahorse"), {3}, false, true});

    EXPECT_THAT(said, ElementsAre("started seahorse"));
}

TEST_F(InstanceTracker, ProcessThatALauncherStartedInTheOwnTreeIsAStart)
{
    start(10, "mousepad");
    tracker.processStarted({process(20, "mousepad"), known("mousepad"), {10}, true});

    EXPECT_THAT(said, ElementsAre("started mousepad", "started mousepad"));
}

TEST_F(InstanceTracker, ChildOfAScriptKeepsItsInstance)
{
    start(10, "script");
    proc::ProcessFacts child = process(11, "real-program");
    child.parent = 10;
    tracker.childStarted(child);
    end(10);

    EXPECT_THAT(said, ElementsAre("started script"));
    end(11);
    EXPECT_EQ(said.back(), "ended script");
}

TEST_F(InstanceTracker, WindowOfAnotherApplicationInTheSameProcessIsAStart)
{
    start(10, "writer");
    show(10, 1);
    showOf(10, "calc", 2);
    showOf(10, "calc", 3);

    EXPECT_THAT(
        said, ElementsAre("started writer", "window writer", "started calc", "window calc")
    );
}

TEST_F(InstanceTracker, GuestEndsWithItsLastWindow)
{
    start(10, "writer");
    show(10, 1);
    showOf(10, "calc", 2);
    showOf(10, "calc", 3);
    tracker.windowGone(2);
    EXPECT_EQ(said.back(), "window calc");
    tracker.windowGone(3);
    EXPECT_EQ(said.back(), "ended calc");

    said.clear();
    showOf(10, "calc", 4);
    EXPECT_THAT(said, ElementsAre("started calc", "window calc"));
}

TEST_F(InstanceTracker, GuestEndsWithItsProcess)
{
    start(10, "writer");
    show(10, 1);
    showOf(10, "calc", 2);
    said.clear();
    end(10);

    EXPECT_THAT(said, ElementsAre("ended writer", "ended calc"));
}

TEST_F(InstanceTracker, WindowThatChangesItsClassChangesItsApplication)
{
    start(10, "writer");
    show(10, 1);
    showOf(10, "calc", 1);

    EXPECT_THAT(tracker.instances().ofProcessAs("writer", 10)->windows, IsEmpty());
    EXPECT_EQ(tracker.instances().ofProcessAs("calc", 10)->windows.size(), 1U);
}

TEST_F(InstanceTracker, HandOverToAnotherApplicationOfTheProgramIsNoEnd)
{
    start(10, "writer");
    show(10, 1);
    start(20, "calc");
    end(20);

    EXPECT_THAT(said, ElementsAre("started writer", "window writer", "started calc"));
    showOf(10, "calc", 2);
    EXPECT_EQ(said.back(), "window calc");
    tracker.windowGone(2);
    EXPECT_EQ(said.back(), "ended calc");
    EXPECT_EQ(tracker.instances().all().size(), 1U);
}

TEST_F(InstanceTracker, WindowOfAnotherProcessMayComeBeforeTheHandOver)
{
    start(10, "writer");
    show(10, 1);
    start(20, "calc");
    showOf(10, "calc", 2);
    end(20);

    EXPECT_THAT(
        said, ElementsAre("started writer", "window writer", "started calc", "window calc")
    );
    end(10);
    EXPECT_EQ(said.back(), "ended calc");
}

TEST_F(InstanceTracker, WindowThatNothingAnnouncedIsAStart)
{
    showOf(10, "mousepad", 1);
    EXPECT_THAT(said, ElementsAre("started mousepad", "window mousepad"));
    tracker.windowGone(1);
    end(10);
    EXPECT_EQ(said.back(), "ended mousepad");
}

TEST_F(InstanceTracker, HintOfWhatRunsIsAStartAndItsExecIsNoOther)
{
    start(10, "mousepad");
    show(10, 1);
    said.clear();
    std::vector<bool> expected;
    tracker.onStarted = [&](const Instance& instance) { expected.push_back(instance.expected); };

    tracker.hinted("mousepad");
    start(20, "mousepad");
    start(30, "mousepad");

    EXPECT_THAT(said, ElementsAre("started again mousepad"));
    EXPECT_THAT(expected, ElementsAre(true, false));
}

TEST_F(InstanceTracker, HintOfWhatDoesNotRunWaitsForItsExec)
{
    tracker.hinted("mousepad");
    start(10, "mousepad");

    EXPECT_THAT(said, ElementsAre("started mousepad"));
    EXPECT_FALSE(tracker.instances().ofProcess(10)->expected);
}

TEST_F(InstanceTracker, HintThatNothingFollowsIsForgotten)
{
    start(10, "mousepad");
    show(10, 1);
    tracker.hinted("mousepad");
    time += std::chrono::seconds(30);
    start(20, "mousepad");

    EXPECT_FALSE(tracker.instances().ofProcess(20)->expected);
}

TEST_F(InstanceTracker, WindowThatAHintAnnouncedIsNoOtherStart)
{
    tracker.alreadyRunning({process(10, "service"), known("service"), {}});
    tracker.hinted("service");
    show(10, 1);

    EXPECT_THAT(said, ElementsAre("started again service", "window service"));
}
