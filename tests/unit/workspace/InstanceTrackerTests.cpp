// Which processes are starts, and which are parts of what runs.
#include "TrackerTest.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workspace::forkOf;
using workspace::known;
using workspace::process;
using InstanceTracker = workspace::TrackerTest;

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

TEST_F(InstanceTracker, EndOfTheFirstWhileTheSecondLivesIsAnEnd)
{
    start(10, "xterm");
    start(20, "xterm");
    show(20);
    said.clear();
    end(10);

    EXPECT_THAT(said, ElementsAre("ended xterm"));
    EXPECT_NE(tracker.instances().ofProcess(20), nullptr);
}

TEST_F(InstanceTracker, EndOfTheFirstWhileTheSecondIsStillToShowItselfStartsThatAgain)
{
    start(10, "xterm");
    start(20, "xterm");
    said.clear();
    end(10);

    EXPECT_THAT(said, ElementsAre("ended xterm", "started again xterm"));
    show(20);
    EXPECT_EQ(said.back(), "window xterm");
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

TEST_F(InstanceTracker, WrapperThatBecomesAProgramOfNobodyStaysTheApplication)
{
    start(10, "wrapper");
    tracker.processBecame(process(10, "real-program"));

    EXPECT_THAT(said, ElementsAre("started wrapper"));
    EXPECT_EQ(tracker.instances().ofProcess(10)->leader.executable, "/usr/bin/real-program");
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

TEST_F(InstanceTracker, EndThatWasNotHeardOfYetIsSaidBeforeTheNextStart)
{
    start(10, "mousepad");
    dead.insert(10);
    start(20, "xterm");

    EXPECT_THAT(said, ElementsAre("started mousepad", "ended mousepad", "started xterm"));
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

TEST_F(InstanceTracker, EveryProcessOfAnInstanceIsWatched)
{
    std::vector<pid_t> watched;
    tracker.onWatchWanted = [&](pid_t pid, std::uint64_t) { watched.push_back(pid); };

    start(10, "thunar");
    start(11, "thunar", {10});
    end(10);
    survivors = {forkOf(12, "thunar")};
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
