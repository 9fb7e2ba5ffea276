// What the helper does when it starts.
#include "AgentKeeperFixture.h"

using testing::ElementsAre;

TEST_F(AgentKeeper, AtLoginTheAgentIsStarted)
{
    keeper.begin({.byAgent = false});

    EXPECT_THAT(hands.calls, ElementsAre("start"));
}

TEST_F(AgentKeeper, AtLoginAnAgentThatRunsAlreadyIsOnlyWatched)
{
    hands.isAgentThere = true;
    keeper.begin({.byAgent = false});

    EXPECT_THAT(hands.calls, ElementsAre("attach"));
}

TEST_F(AgentKeeper, StartedByTheAgentItOnlyWatches)
{
    hands.isAgentThere = true;
    keeper.begin({.byAgent = true});

    EXPECT_THAT(hands.calls, ElementsAre("attach"));
}

TEST_F(AgentKeeper, AnAgentThatDiedRightAfterStartingTheHelperIsRestarted)
{
    keeper.begin({.byAgent = true});

    EXPECT_THAT(hands.calls, ElementsAre("start"));
}

TEST_F(AgentKeeper, AnAgentThatFailedRightAfterStartingTheHelperIsRestarted)
{
    hands.status = 1;
    keeper.begin({.byAgent = true});

    EXPECT_THAT(hands.calls, ElementsAre("start"));
}

TEST_F(AgentKeeper, AnAgentThatWasQuitRightAfterStartingTheHelperIsNot)
{
    hands.status = 0;
    keeper.begin({.byAgent = true});

    EXPECT_THAT(hands.calls, ElementsAre("finish"));
}

TEST_F(AgentKeeper, AnAgentThatCannotBeSeenIsNotTakenForDead)
{
    keeper.begin({.byAgent = true, .seesOthers = false});

    EXPECT_TRUE(hands.calls.empty());
}
