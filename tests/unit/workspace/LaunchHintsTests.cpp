// Launchers' announcements.
#include "TrackerTest.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using workspace::Instance;
using workspace::known;
using workspace::LaunchHints;
using workspace::process;
using TrackerHints = workspace::TrackerTest;

constexpr workspace::Clock::time_point NOW{std::chrono::hours(1)};

} // namespace

TEST_F(TrackerHints, HintOfWhatRunsIsAStartAndItsExecIsNoOther)
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

TEST_F(TrackerHints, HintOfWhatEndsBeforeTheExecIsForgotten)
{
    start(10, "mousepad");
    show(10, 1);
    tracker.hinted("mousepad"); // the lock that this raises is lifted by the end
    end(10);
    start(20, "mousepad");

    EXPECT_FALSE(tracker.instances().ofProcess(20)->expected);
}

TEST_F(TrackerHints, EndOfAnotherApplicationLeavesTheExecAStartOfItsOwn)
{
    start(10, "mousepad");
    show(10, 1);
    start(11, "xterm");
    show(11, 2);
    tracker.hinted("mousepad");
    end(11);
    start(20, "mousepad");

    EXPECT_FALSE(tracker.instances().ofProcess(20)->expected);
}

TEST_F(TrackerHints, HintOfWhatHasEndedUnheardIsLeftToTheExec)
{
    start(10, "mousepad");
    show(10, 1);
    said.clear();
    dead = {10};
    tracker.hinted("mousepad");

    EXPECT_THAT(said, ElementsAre("ended mousepad"));
}

TEST_F(TrackerHints, HintOfWhatIsHiddenAndShowsNothingIsLeftToItsWindow)
{
    tracker.alreadyRunning({process(10, "service"), known("service", false), {}});
    tracker.hinted("service");
    EXPECT_THAT(said, testing::IsEmpty());
    show(10, 1);

    EXPECT_THAT(said, ElementsAre("started again service", "window service"));
}

TEST_F(TrackerHints, HintOfWhatDoesNotRunWaitsForItsExec)
{
    tracker.hinted("mousepad");
    start(10, "mousepad");

    EXPECT_THAT(said, ElementsAre("started mousepad"));
    EXPECT_FALSE(tracker.instances().ofProcess(10)->expected);
}

TEST_F(TrackerHints, HintThatNothingFollowsIsForgotten)
{
    start(10, "mousepad");
    show(10, 1);
    tracker.hinted("mousepad");
    time += std::chrono::seconds(30);
    start(20, "mousepad");

    EXPECT_FALSE(tracker.instances().ofProcess(20)->expected);
}

TEST_F(TrackerHints, WindowThatAHintAnnouncedIsNoOtherStart)
{
    tracker.alreadyRunning({process(10, "service"), known("service"), {}});
    tracker.hinted("service");
    show(10, 1);

    EXPECT_THAT(said, ElementsAre("started again service", "window service"));
}

TEST(LaunchHint, AnnouncesItsOwnApplicationForAWhile)
{
    LaunchHints hints;
    hints.add("mousepad", NOW);

    EXPECT_TRUE(hints.announces("mousepad", NOW + LaunchHints::LONGEST_HINT));
    EXPECT_FALSE(hints.announces("xterm", NOW));
    EXPECT_FALSE(
        hints.announces("mousepad", NOW + LaunchHints::LONGEST_HINT + std::chrono::milliseconds(1))
    );
}

TEST(LaunchHint, AnnouncesOneStart)
{
    LaunchHints hints;
    hints.add("mousepad", NOW);
    hints.remove("mousepad");

    EXPECT_FALSE(hints.announces("mousepad", NOW));
}

TEST(LaunchHint, CountsFromTheLatestOne)
{
    LaunchHints hints;
    hints.add("mousepad", NOW);
    hints.add("mousepad", NOW + LaunchHints::LONGEST_HINT);

    EXPECT_TRUE(hints.announces("mousepad", NOW + 2 * LaunchHints::LONGEST_HINT));
}
