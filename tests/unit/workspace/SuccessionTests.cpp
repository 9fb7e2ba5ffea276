// Who carries an instance on when a process of it is gone.
#include "TrackerTest.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using workspace::forkOf;
using workspace::instance;
using workspace::InstancePtr;
using workspace::known;
using workspace::process;
using TrackerSuccession = workspace::TrackerTest;

class Succession : public testing::Test
{
protected:
    Succession() { list.add(editor); }

    /// The end of the editor's only process, with these left.
    bool takesOver(const std::vector<proc::ProcessFacts>& survivors) const
    {
        editor->processes.clear();
        return succession.takeOver(*editor, survivors);
    }

    InstancePtr editor = instance(1, "mousepad", 10);
    workspace::InstanceList list;
    workspace::Succession succession{list};
};

} // namespace

TEST_F(TrackerSuccession, SurvivorOfTheFirstDoesNotTakeTheSecondOver)
{
    start(10, "mousepad");
    show(10);
    start(20, "mousepad");
    dead = {10, 20};
    survivors = {forkOf(30, "mousepad")}; // forked off by the first, which was ended then
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

TEST_F(TrackerSuccession, SurvivorOfTheSameExecutableTakesOver)
{
    start(10, "thunar");
    survivors = {forkOf(11, "thunar")};
    end(10);

    EXPECT_THAT(said, ElementsAre("started thunar"));
    EXPECT_EQ(tracker.instances().ofProcess(11)->leader.pid, 11);
    survivors.clear();
    end(11);
    EXPECT_EQ(said.back(), "ended thunar");
}

TEST_F(TrackerSuccession, StartRightAfterAnEndIsNoSurvivorThoughItsExecIsHeardOfLater)
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

TEST_F(TrackerSuccession, SurvivorThatExecutesTheSameOnceMoreIsAStart)
{
    start(10, "xterm");
    survivors = {forkOf(11, "xterm")};
    end(10);
    survivors.clear();
    start(11, "xterm");

    EXPECT_THAT(said, ElementsAre("started xterm", "ended xterm", "started xterm"));
    EXPECT_EQ(tracker.instances().all().size(), 1U);
}

TEST_F(TrackerSuccession, SurvivorThatExecutesSomethingElseStaysWhatItIs)
{
    start(10, "thunar");
    survivors = {forkOf(11, "thunar")};
    end(10);
    proc::ProcessFacts real = process(11, "thunar");
    real.executable = "/usr/lib/thunar/real";
    tracker.processStarted({real, known("thunar"), {}});

    EXPECT_THAT(said, ElementsAre("started thunar"));
}

TEST_F(TrackerSuccession, WhatRanInATerminalThatWentDoesNotTakeItOver)
{
    start(10, "xterm");
    survivors = {forkOf(11, "xterm", 5)};
    end(10);

    EXPECT_THAT(said, ElementsAre("started xterm", "ended xterm"));
}

TEST_F(TrackerSuccession, SurvivorThatExecutesSomethingInATerminalOfItsOwnEndsWhatItTookOver)
{
    start(10, "xterm");
    survivors = {forkOf(11, "xterm")};
    end(10);
    survivors.clear();
    EXPECT_THAT(said, ElementsAre("started xterm"));
    tracker.processBecame(process(11, "bash", 5));

    EXPECT_EQ(said.back(), "ended xterm");
    EXPECT_TRUE(tracker.instances().all().empty());
}

TEST_F(TrackerSuccession, EndOfWhatWasTakenOverByMistakeStartsTheNextOneAgain)
{
    start(10, "xterm");
    survivors = {forkOf(11, "xterm")};
    end(10);
    survivors.clear();
    start(20, "xterm");
    said.clear();
    tracker.processBecame(process(11, "bash", 5));

    EXPECT_THAT(said, ElementsAre("ended xterm", "started again xterm"));
    EXPECT_EQ(tracker.instances().ofProcess(20)->leader.pid, 20);
    end(20);
    EXPECT_EQ(said.back(), "ended xterm");
}

TEST_F(TrackerSuccession, SurvivorThatExecutesSomethingWithoutATerminalCarriesOn)
{
    start(10, "thunar");
    survivors = {forkOf(11, "thunar")};
    end(10);
    survivors.clear();
    tracker.processBecame(process(11, "real"));

    EXPECT_THAT(said, ElementsAre("started thunar"));
    EXPECT_EQ(tracker.instances().ofProcess(11)->leader.executable, "/usr/bin/real");
}

TEST_F(TrackerSuccession, SurvivorThatIsSeenAgainIsNoStart)
{
    start(10, "thunar");
    survivors = {forkOf(11, "thunar")};
    end(10);
    // Among all that runs, after events were lost.
    tracker.processStarted({forkOf(11, "thunar"), known("thunar"), {}});

    EXPECT_THAT(said, ElementsAre("started thunar"));
}

TEST_F(TrackerSuccession, OlderProcessOfTheSameExecutableIsNoSurvivor)
{
    start(10, "thunar");
    survivors = {forkOf(9, "thunar")};
    end(10);

    EXPECT_EQ(said.back(), "ended thunar");
}

TEST_F(TrackerSuccession, LastProcessEndsTheInstanceAndTheOldestLeadsMeanwhile)
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

TEST_F(Succession, OldestProcessLeadsOnceTheLeaderIsGone)
{
    editor->processes = {{10, 100}, {20, 300}, {30, 200}};
    workspace::Succession::leadByOldest(*editor);
    EXPECT_EQ(editor->leader.pid, 10);

    editor->processes.erase(10);
    workspace::Succession::leadByOldest(*editor);
    EXPECT_EQ(editor->leader.pid, 30);
    EXPECT_EQ(editor->leader.startTime, 200U);
}

TEST_F(Succession, FirstProcessThatMayBeAChildTakesOver)
{
    EXPECT_TRUE(takesOver({forkOf(9, "mousepad"), forkOf(12, "mousepad"), forkOf(11, "mousepad")}));
    EXPECT_EQ(editor->leader.pid, 12);
    EXPECT_EQ(editor->processes.size(), 1U);
    EXPECT_TRUE(editor->processes.contains(12));
}

TEST_F(Succession, ProcessOfAnotherInstanceTakesNothingOver)
{
    list.add(instance(2, "mousepad", 11));

    EXPECT_FALSE(takesOver({forkOf(11, "mousepad")}));
    EXPECT_EQ(editor->leader.pid, 10);
    EXPECT_FALSE(editor->takenOver);
}

TEST_F(Succession, WhatExecutedTheApplicationItselfTakesNothingOver)
{
    proc::ProcessFacts withDocument = process(12, "mousepad");
    withDocument.arguments.emplace_back("document.txt");

    EXPECT_FALSE(takesOver({process(11, "mousepad"), withDocument}));
}

TEST_F(Succession, WhatIsInTheMiddleOfAnExecTakesNothingOver)
{
    proc::ProcessFacts early = forkOf(11, "mousepad");
    early.arguments.clear();

    EXPECT_FALSE(takesOver({early}));
}
