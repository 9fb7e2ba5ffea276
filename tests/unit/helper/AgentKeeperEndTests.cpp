// What the helper makes of the end of the agent, of notices and of the session's end.
#include "AgentKeeperFixture.h"

using testing::ElementsAre;

namespace {

constexpr auto NOTICE = "TERMINATE_HELPER_TARVEL";
constexpr auto AGENT = "com.quorvent.Tarvel";

} // namespace

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
