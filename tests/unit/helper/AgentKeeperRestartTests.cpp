// How often the agent is started again, and what the user is told.
#include "AgentKeeperFixture.h"

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;

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
    keeper.begin({.byAgent = false});
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
    keeper.begin({.byAgent = false});
    hands.isAgentThere = true;
    keeper.agentArrived();

    EXPECT_THAT(hands.calls, ElementsAre("start"));
}

TEST_F(AgentKeeper, AnAgentThatCannotBeStartedIsTriedAgainOnceAMinuteWithoutAnotherWarning)
{
    hands.startProblem = "/opt/Tarvel.app/Tarvel: No such file or directory";
    keeper.begin({.byAgent = false});
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
    keeper.begin({.byAgent = false});
    hands.isAgentThere = true;
    keeper.agentArrived();
    hands.calls.clear();
    hands.pass(60s);

    EXPECT_TRUE(hands.calls.empty());
}

TEST_F(AgentKeeper, AnAgentWhoseArrivalWasMissedIsWatchedAtTheNextTry)
{
    hands.startProblem = "no room";
    keeper.begin({.byAgent = false});
    hands.isAgentThere = true;
    hands.pass(60s);

    EXPECT_THAT(hands.calls, ElementsAre("start", "warn", "attach"));
}

TEST_F(AgentKeeper, AfterAnAgentOfSomebodyElseTheUserIsToldAnew)
{
    hands.startProblem = "no room";
    keeper.begin({.byAgent = false});
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
    keeper.begin({.byAgent = false});
    keeper.sessionEnds();
    hands.calls.clear();
    hands.pass(60s);

    EXPECT_TRUE(hands.calls.empty());
}
