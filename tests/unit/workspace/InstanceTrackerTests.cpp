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
        tracker.processStarted(process(pid, name), known(name), ancestors);
    }

    void end(pid_t pid) { tracker.processEnded(pid, static_cast<std::uint64_t>(pid) * 10); }

    workspace::InstanceTracker tracker;
    std::vector<std::string> said;
    std::vector<proc::ProcessFacts> survivors;
    std::set<pid_t> dead;
};

} // namespace

TEST_F(InstanceTracker, StartWindowAndEndAreReportedOnceEach)
{
    start(10, "mousepad");
    tracker.windowShown(tracker.instanceOf(10));
    tracker.windowShown(tracker.instanceOf(10));
    end(10);

    EXPECT_THAT(said, ElementsAre("started mousepad", "window mousepad", "ended mousepad"));
    EXPECT_THAT(tracker.instances(), IsEmpty());
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
    EXPECT_THAT(tracker.instances(), IsEmpty());
}

TEST_F(InstanceTracker, SecondStartThatHandsOverIsAStartAndNoEnd)
{
    start(10, "mousepad");
    start(20, "mousepad");
    end(20);

    EXPECT_THAT(said, ElementsAre("started mousepad", "started mousepad", "handed over mousepad"));
    EXPECT_EQ(tracker.instances().size(), 1U);
}

TEST_F(InstanceTracker, EndOfTheFirstWhileTheSecondLivesIsAnEnd)
{
    start(10, "xterm");
    start(20, "xterm");
    end(10);

    EXPECT_EQ(said.back(), "ended xterm");
    EXPECT_NE(tracker.instanceOf(20), nullptr);
}

TEST_F(InstanceTracker, SecondInstanceThatShowedAWindowEndsAsOne)
{
    start(10, "xterm");
    start(20, "xterm");
    tracker.windowShown(tracker.instanceOf(20));
    end(20);

    EXPECT_EQ(said.back(), "ended xterm");
}

TEST_F(InstanceTracker, ProcessOfTheOwnTreeIsAHelperAndNoStart)
{
    start(10, "firefox");
    start(11, "firefox", {10, 1});

    EXPECT_THAT(said, ElementsAre("started firefox"));
    EXPECT_EQ(tracker.instanceOf(11), tracker.instanceOf(10));
}

TEST_F(InstanceTracker, SameProgramOnATerminalOfTheTreeIsAStart)
{
    start(10, "xterm");
    tracker.processStarted(process(30, "xterm", 34816), known("xterm"), {20, 10, 1});

    EXPECT_THAT(said, ElementsAre("started xterm", "started xterm"));
    EXPECT_EQ(tracker.instances().size(), 2U);
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
    tracker.processStarted(process(10, "firefox-bin"), known("firefox"), {});

    EXPECT_THAT(said, ElementsAre("started firefox"));
}

TEST_F(InstanceTracker, ProcessThatExecutesAnotherApplicationIsBothUntilItEnds)
{
    start(10, "uxterm");
    start(10, "xterm");

    EXPECT_THAT(said, ElementsAre("started uxterm", "started xterm"));
    EXPECT_EQ(tracker.instanceOf(10)->application->identifier, "xterm");
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
    EXPECT_EQ(tracker.instanceOf(10)->leader.executable, "/usr/bin/real-program");
}

TEST_F(InstanceTracker, ReusedProcessIdentifierIsAnotherProcess)
{
    start(10, "mousepad");
    proc::ProcessFacts later = process(10, "mousepad");
    later.startTime = 999;
    tracker.processStarted(later, known("mousepad"), {});

    EXPECT_THAT(said, ElementsAre("started mousepad", "ended mousepad", "started mousepad"));
    tracker.processEnded(10, 100);
    EXPECT_NE(tracker.instanceOf(10), nullptr) << "the end of the earlier one must not count";
}

TEST_F(InstanceTracker, SurvivorOfTheSameExecutableTakesOver)
{
    start(10, "thunar");
    survivors = {process(11, "thunar")};
    end(10);

    EXPECT_THAT(said, ElementsAre("started thunar"));
    EXPECT_EQ(tracker.instanceOf(11)->leader.pid, 11);
    survivors.clear();
    end(11);
    EXPECT_EQ(said.back(), "ended thunar");
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

    EXPECT_EQ(tracker.instanceOf(11)->leader.pid, 11);
    end(11);
    EXPECT_THAT(said, ElementsAre("started soffice"));
    end(12);
    EXPECT_EQ(said.back(), "ended soffice");
}

TEST_F(InstanceTracker, WhatRanBeforeIsListedAndItsWindowIsNoNews)
{
    tracker.alreadyRunning(process(10, "mousepad"), known("mousepad"), {});
    tracker.windowShown(tracker.instanceOf(10));

    EXPECT_THAT(said, IsEmpty());
    EXPECT_EQ(tracker.instances().size(), 1U);
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

    EXPECT_EQ(tracker.instanceOf(31, {30, 20, 10})->application->identifier, "mousepad");
    EXPECT_EQ(tracker.instanceOf(21, {20, 10})->application->identifier, "xterm");
    EXPECT_EQ(tracker.instanceOf(40, {1}), nullptr);
}
