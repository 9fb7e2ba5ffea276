#include "helper/AgentKeeper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr auto NOTICE = "TERMINATE_HELPER_TARVEL";
constexpr auto AGENT = "com.quorvent.Tarvel";

class FakeHands : public helper::AgentKeeper::Hands
{
public:
    helper::RestartLimit::TimePoint now() override { return time; }

    bool attach() override
    {
        if (isAgentThere) {
            calls.emplace_back("attach");
        }
        return isAgentThere;
    }

    std::optional<int> latestStatus() override { return status; }

    bool start(std::string& problem) override
    {
        calls.emplace_back("start");
        problem = startProblem;
        return startProblem.empty();
    }

    void settle(std::function<void()> then) override
    {
        settling = std::move(then);
        if (settlesAtOnce) {
            settled();
        }
    }

    void warn(const std::string& /*title*/, const std::string& text) override
    {
        calls.emplace_back("warn");
        warning = text;
    }

    void callAt(helper::RestartLimit::TimePoint moment, std::function<void()> then) override
    {
        alarmAt = moment;
        alarm = std::move(then);
    }

    void finish() override { calls.emplace_back("finish"); }

    /// Lets time pass, and what is due with it happen.
    void pass(std::chrono::seconds span)
    {
        time += span;
        if (alarm && alarmAt <= time) {
            std::exchange(alarm, nullptr)();
        }
    }

    void settled() { std::exchange(settling, nullptr)(); }

    helper::RestartLimit::TimePoint time{};
    bool isAgentThere = false;
    std::optional<int> status;
    bool settlesAtOnce = true;
    std::string startProblem;
    std::string warning;
    std::vector<std::string> calls;

private:
    std::function<void()> settling;
    std::function<void()> alarm;
    helper::RestartLimit::TimePoint alarmAt{};
};

class AgentKeeper : public testing::Test
{
protected:
    // The agent lives and is watched; nothing of how that came about is left in the calls.
    void watchOne()
    {
        hands.isAgentThere = true;
        keeper.begin(true, true);
        hands.isAgentThere = false;
        hands.calls.clear();
    }

    void useUpRestarts()
    {
        for (std::size_t i = 0; i < helper::RestartLimit::MOST; ++i) {
            keeper.agentEnded(std::nullopt);
        }
        hands.calls.clear();
    }

    FakeHands hands;
    helper::AgentKeeper keeper{hands};
};

} // namespace

TEST_F(AgentKeeper, AtLoginTheAgentIsStarted)
{
    keeper.begin(false, true);

    EXPECT_THAT(hands.calls, ElementsAre("start"));
}

TEST_F(AgentKeeper, AtLoginAnAgentThatRunsAlreadyIsOnlyWatched)
{
    hands.isAgentThere = true;
    keeper.begin(false, true);

    EXPECT_THAT(hands.calls, ElementsAre("attach"));
}

TEST_F(AgentKeeper, StartedByTheAgentItOnlyWatches)
{
    hands.isAgentThere = true;
    keeper.begin(true, true);

    EXPECT_THAT(hands.calls, ElementsAre("attach"));
}

TEST_F(AgentKeeper, AnAgentThatDiedRightAfterStartingTheHelperIsRestarted)
{
    keeper.begin(true, true);

    EXPECT_THAT(hands.calls, ElementsAre("start"));
}

TEST_F(AgentKeeper, AnAgentThatFailedRightAfterStartingTheHelperIsRestarted)
{
    hands.status = 1;
    keeper.begin(true, true);

    EXPECT_THAT(hands.calls, ElementsAre("start"));
}

TEST_F(AgentKeeper, AnAgentThatWasQuitRightAfterStartingTheHelperIsNot)
{
    hands.status = 0;
    keeper.begin(true, true);

    EXPECT_THAT(hands.calls, ElementsAre("finish"));
}

TEST_F(AgentKeeper, AnAgentThatCannotBeSeenIsNotTakenForDead)
{
    keeper.begin(true, false);

    EXPECT_TRUE(hands.calls.empty());
}

TEST_F(AgentKeeper, AnEndWithoutStatusIsUndone)
{
    watchOne();
    keeper.agentEnded(std::nullopt);

    EXPECT_THAT(hands.calls, ElementsAre("start"));
}

TEST_F(AgentKeeper, AnEndWithAnotherStatusThanZeroIsUndone)
{
    watchOne();
    keeper.agentEnded(1);

    EXPECT_THAT(hands.calls, ElementsAre("start"));
}

TEST_F(AgentKeeper, AnEndWithStatusZeroIsDeliberate)
{
    watchOne();
    keeper.agentEnded(0);

    EXPECT_THAT(hands.calls, ElementsAre("finish"));
}

TEST_F(AgentKeeper, AnAgentThatHandedOverLeavesTheOtherToBeWatched)
{
    watchOne();
    hands.isAgentThere = true;
    keeper.agentEnded(0);

    EXPECT_THAT(hands.calls, ElementsAre("attach"));
}

TEST_F(AgentKeeper, NoticeEndsTheHelperOnceWhileTheAgentLives)
{
    watchOne();
    keeper.noticeReceived(NOTICE, AGENT);
    keeper.noticeReceived(NOTICE, AGENT);
    keeper.agentEnded(std::nullopt);

    EXPECT_THAT(hands.calls, ElementsAre("finish"));
}

TEST_F(AgentKeeper, NoticeOfSomebodyElseChangesNothing)
{
    watchOne();
    keeper.noticeReceived(NOTICE, "com.quorvent.Other");
    keeper.agentEnded(1);

    EXPECT_THAT(hands.calls, ElementsAre("start"));
}

TEST_F(AgentKeeper, NoticeThatArrivesAfterTheEndItExplainsStillWins)
{
    watchOne();
    hands.settlesAtOnce = false;
    keeper.agentEnded(1);
    EXPECT_TRUE(hands.calls.empty());

    keeper.noticeReceived(NOTICE, AGENT);
    hands.settled();
    EXPECT_THAT(hands.calls, ElementsAre("finish"));
}

TEST_F(AgentKeeper, AnAgentThatTheUserStartedMeanwhileIsWatchedInstead)
{
    watchOne();
    hands.settlesAtOnce = false;
    keeper.agentEnded(std::nullopt);
    hands.isAgentThere = true;
    hands.settled();

    EXPECT_THAT(hands.calls, ElementsAre("attach"));
}

TEST_F(AgentKeeper, TheSixthRestartOfAMinuteBecomesAWarning)
{
    watchOne();
    useUpRestarts();
    keeper.agentEnded(std::nullopt);

    EXPECT_THAT(hands.calls, ElementsAre("warn"));
    EXPECT_THAT(hands.warning, HasSubstr("5 times"));
    EXPECT_THAT(hands.warning, HasSubstr("not protected"));
}

TEST_F(AgentKeeper, TheStartAtLoginIsNoRestart)
{
    keeper.begin(false, true);
    for (int i = 0; i < 5; ++i) {
        keeper.agentEnded(std::nullopt);
    }

    EXPECT_THAT(hands.calls, ElementsAre("start", "start", "start", "start", "start", "start"));
}

TEST_F(AgentKeeper, AfterTheWarningAnAgentThatSomebodyStartsIsWatchedAgain)
{
    watchOne();
    useUpRestarts();
    keeper.agentEnded(std::nullopt);
    keeper.agentArrived();
    hands.isAgentThere = true;
    keeper.agentArrived();
    hands.isAgentThere = false;
    hands.time += helper::RestartLimit::WINDOW;
    keeper.agentEnded(std::nullopt);

    EXPECT_THAT(hands.calls, ElementsAre("warn", "attach", "start"));
}

TEST_F(AgentKeeper, ArrivalOfTheAgentThatIsWatchedAlreadyChangesNothing)
{
    keeper.begin(false, true);
    hands.isAgentThere = true;
    keeper.agentArrived();

    EXPECT_THAT(hands.calls, ElementsAre("start"));
}

TEST_F(AgentKeeper, AnAgentThatCannotBeStartedIsTriedAgainOnceAMinuteWithoutAnotherWarning)
{
    hands.startProblem = "/opt/Tarvel.app/Tarvel: No such file or directory";
    keeper.begin(false, true);
    EXPECT_THAT(hands.calls, ElementsAre("start", "warn"));
    EXPECT_THAT(hands.warning, HasSubstr("No such file or directory"));

    hands.pass(59s);
    EXPECT_THAT(hands.calls, ElementsAre("start", "warn"));
    hands.pass(1s);
    EXPECT_THAT(hands.calls, ElementsAre("start", "warn", "start"));
    hands.pass(60s);
    EXPECT_THAT(hands.calls, ElementsAre("start", "warn", "start", "start"));
}

TEST_F(AgentKeeper, TheSixthDeathOfAMinuteIsUndoneAMinuteLater)
{
    watchOne();
    useUpRestarts();
    keeper.agentEnded(std::nullopt);
    hands.pass(59s);
    EXPECT_THAT(hands.calls, ElementsAre("warn"));

    hands.pass(1s);
    EXPECT_THAT(hands.calls, ElementsAre("warn", "start"));
}

TEST_F(AgentKeeper, AnAgentThatKeepsDyingIsStartedOnceAMinuteAndTheUserIsToldOnce)
{
    watchOne();
    useUpRestarts();
    keeper.agentEnded(std::nullopt);
    hands.calls.clear();
    for (int minute = 0; minute < 3; ++minute) {
        hands.pass(60s);
        keeper.agentEnded(std::nullopt);
    }
    hands.pass(10s);

    EXPECT_THAT(hands.calls, ElementsAre("start", "start", "start"));
}

TEST_F(AgentKeeper, AnAgentThatHasLivedForAMinuteIsRestartedAtOnceAgain)
{
    watchOne();
    useUpRestarts();
    keeper.agentEnded(std::nullopt);
    hands.pass(60s);
    hands.pass(60s);
    hands.calls.clear();
    keeper.agentEnded(std::nullopt);
    keeper.agentEnded(std::nullopt);

    EXPECT_THAT(hands.calls, ElementsAre("start", "start"));
}

TEST_F(AgentKeeper, NothingIsTriedBesideAnAgentThatSomebodyStarted)
{
    hands.startProblem = "no room";
    keeper.begin(false, true);
    hands.isAgentThere = true;
    keeper.agentArrived();
    hands.calls.clear();
    hands.pass(60s);

    EXPECT_TRUE(hands.calls.empty());
}

TEST_F(AgentKeeper, AnAgentWhoseArrivalWasMissedIsWatchedAtTheNextTry)
{
    hands.startProblem = "no room";
    keeper.begin(false, true);
    hands.isAgentThere = true;
    hands.pass(60s);

    EXPECT_THAT(hands.calls, ElementsAre("start", "warn", "attach"));
}

TEST_F(AgentKeeper, AfterAnAgentOfSomebodyElseTheUserIsToldAnew)
{
    hands.startProblem = "no room";
    keeper.begin(false, true);
    hands.isAgentThere = true;
    keeper.agentArrived();
    hands.isAgentThere = false;
    hands.calls.clear();
    keeper.agentEnded(std::nullopt);

    EXPECT_THAT(hands.calls, ElementsAre("start", "warn"));
}

TEST_F(AgentKeeper, NothingIsTriedInASessionThatEnds)
{
    hands.startProblem = "no room";
    keeper.begin(false, true);
    keeper.sessionEnds();
    hands.calls.clear();
    hands.pass(60s);

    EXPECT_TRUE(hands.calls.empty());
}

TEST_F(AgentKeeper, NothingIsStartedInASessionThatEnds)
{
    watchOne();
    keeper.sessionEnds();
    keeper.agentEnded(1);

    EXPECT_THAT(hands.calls, ElementsAre("finish"));
}

TEST_F(AgentKeeper, ASessionThatEndsWhileNoticesAreAwaitedEndsTheHelper)
{
    watchOne();
    hands.settlesAtOnce = false;
    keeper.agentEnded(1);
    keeper.sessionEnds();
    hands.settled();

    EXPECT_THAT(hands.calls, ElementsAre("finish"));
}
