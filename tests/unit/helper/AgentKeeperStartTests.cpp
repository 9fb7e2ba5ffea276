// What the helper does when it starts.
#include "AgentKeeperFixture.h"

using testing::ElementsAre;

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
