// Starts that leave the work to what runs already.
#include "TrackerTest.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using workspace::instance;
using workspace::InstancePtr;
using workspace::known;
using workspace::process;
using TrackerHandOver = workspace::TrackerTest;

/// Two applications of one program, and an editor.
class HandOver : public testing::Test
{
protected:
    HandOver()
    {
        for (const InstancePtr& entry : {writer, editor, laterEditor}) {
            list.add(entry);
        }
        ask.shareProgram = [](const std::string& one, const std::string& other) {
            return (one == "calc" && other == "writer") || (one == "writer" && other == "calc");
        };
        ask.mayHandOver = ask.shareProgram;
        calc->awaited = workspace::Clock::time_point();
    }

    InstancePtr writer = instance(1, "writer", 10);
    InstancePtr editor = instance(2, "mousepad", 20);
    InstancePtr laterEditor = instance(3, "mousepad", 30);
    InstancePtr calc = instance(4, "calc", 40);
    workspace::InstanceList list;
    workspace::Questions ask;
    workspace::HandOver handOver{list, ask};
};

} // namespace

TEST_F(TrackerHandOver, SecondStartThatHandsOverIsAStartAndNoEnd)
{
    start(10, "mousepad");
    start(20, "mousepad");
    end(20);

    EXPECT_THAT(said, ElementsAre("started mousepad", "started mousepad", "handed over mousepad"));
    EXPECT_EQ(tracker.instances().all().size(), 1U);
}

TEST_F(TrackerHandOver, SecondStartThatHandedOverIsNoEndWhenTheFirstsIsHeardOfBefore)
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

TEST_F(TrackerHandOver, RestartOfAnApplicationIsNoHandOverToTheOneThatEnded)
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

TEST_F(TrackerHandOver, HandOverToAHiddenInstanceIsOneStart)
{
    start(10, "service");
    time += std::chrono::minutes(10);
    start(20, "service");
    end(20);
    said.clear();
    show(10, 1);

    EXPECT_THAT(said, ElementsAre("window service"));
}

TEST_F(TrackerHandOver, WindowMayComeBeforeTheStartHasHandedOver)
{
    start(10, "service");
    time += std::chrono::minutes(10);
    start(20, "service");
    said.clear();
    show(10, 1);
    end(20);

    EXPECT_THAT(said, ElementsAre("window service", "handed over service"));
}

TEST_F(TrackerHandOver, HandOverToAnotherApplicationOfTheProgramIsNoEnd)
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

TEST_F(TrackerHandOver, WindowOfAnotherProcessMayComeBeforeTheHandOver)
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

TEST_F(HandOver, IsReceivedByTheLatestInstanceOfTheApplicationBeforeIt)
{
    EXPECT_EQ(handOver.receiverOf(*instance(4, "mousepad", 40)), laterEditor);
    EXPECT_EQ(handOver.receiverOf(*laterEditor), editor);
    EXPECT_EQ(handOver.receiverOf(*editor), nullptr);
}

TEST_F(HandOver, MakesAStartTheGuestOfAnotherApplicationOfTheProgram)
{
    EXPECT_TRUE(handOver.becomesGuest(*calc));
    EXPECT_TRUE(calc->guest);
    EXPECT_EQ(calc->leader.pid, 10);
    EXPECT_EQ(calc->processes, writer->processes);
}

TEST_F(HandOver, MakesNoGuestOfAStartThatItsOwnApplicationReceives)
{
    list.add(instance(3, "calc", 35));

    EXPECT_FALSE(handOver.becomesGuest(*calc));
    EXPECT_FALSE(calc->guest);
}

TEST_F(HandOver, MakesNoGuestOfWhatOnlyTheSameLauncherStarts)
{
    ask.mayHandOver = [](const std::string&, const std::string&) { return false; };

    EXPECT_FALSE(handOver.becomesGuest(*calc));
    EXPECT_TRUE(handOver.isGuest({process(10, "soffice"), known("calc"), {}}));
}

TEST_F(HandOver, MakesNoGuestOfAGuest)
{
    writer->guest = true;

    EXPECT_FALSE(handOver.becomesGuest(*calc));
}

TEST_F(HandOver, MakesNoGuestOfWhatNobodyWaitsFor)
{
    calc->awaited.reset();

    EXPECT_FALSE(handOver.becomesGuest(*calc));
}

TEST_F(HandOver, KnowsAGuestByTheProcessThatShowsItsWindows)
{
    EXPECT_TRUE(handOver.isGuest({process(10, "soffice"), known("calc"), {}}));
    EXPECT_TRUE(handOver.isGuest({process(11, "soffice"), known("calc"), {10}}));
    EXPECT_FALSE(handOver.isGuest({process(20, "mousepad"), known("calc"), {}}));
    ask.shareProgram = nullptr;
    EXPECT_FALSE(handOver.isGuest({process(10, "soffice"), known("calc"), {}}));
}
