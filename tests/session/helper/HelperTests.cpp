#include "HelperFixture.h"
#include "desktop/PrivateXServer.h"
#include "desktop/Wait.h"

#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class Helper : public HelperFixture
{
};

// Time that a process has used of a processor, in clock ticks.
long ticksOf(pid_t process)
{
    std::istringstream fields(desktop::readFile("/proc/" + std::to_string(process) + "/stat"));
    std::string skipped;
    for (int i = 0; i < 13; ++i) {
        fields >> skipped;
    }
    long user = 0;
    long system = 0;
    fields >> user >> system;
    return user + system;
}

} // namespace

TEST_F(Helper, AtLoginStartsTheAgentQuietly)
{
    helper = startHelperAtLogin();

    const AgentStart start = waitForStarts(1)[0];
    EXPECT_THAT(start.argument, StartsWith("-psn_"));
    EXPECT_EQ(start.startFromMaster, "unset");
}

TEST_F(Helper, StartedByTheAgentItBringsBackAKilledAgentQuietly)
{
    startPair();
    agent->signal(SIGKILL);

    const AgentStart start = waitForStarts(2)[1];
    EXPECT_THAT(start.argument, StartsWith("-psn_"));
    EXPECT_EQ(start.startFromMaster, "unset");
}

TEST_F(Helper, AtLoginLeavesAnAgentAloneThatRunsAlready)
{
    agent = startAgentByHand();
    waitForStarts(1);
    helper = startHelperAtLogin();
    waitUntilHelperWatches();
    agent->signal(SIGKILL);

    EXPECT_THAT(waitForStarts(2)[1].argument, StartsWith("-psn_"));
}

TEST_F(Helper, AnAgentThatIsKilledAgainAndAgainIsBackFiveTimes)
{
    startBus();
    helper = startHelperAtLogin();
    for (std::size_t round = 1; round <= 5; ++round) {
        ASSERT_EQ(::kill(waitForStarts(round).back().process, SIGKILL), 0);
        EXPECT_THAT(waitForStarts(round + 1).back().argument, StartsWith("-psn_"));
    }
}

TEST_F(Helper, AnExitWithAStatusOtherThanZeroIsUndone)
{
    startPair();
    agent->signal(SIGINT);

    const AgentStart restarted = waitForStarts(2)[1];
    ASSERT_EQ(::kill(restarted.process, SIGINT), 0);
    waitForStarts(3);
}

TEST_F(Helper, AnExitWithStatusZeroIsNotUndoneAndEndsTheHelper)
{
    startPair();
    agent->signal(SIGUSR1);

    EXPECT_TRUE(endsWithZero(helper)) << errors();
    EXPECT_EQ(starts().size(), 1U);
}

TEST_F(Helper, AnExitWithStatusZeroBeforeTheHelperSawTheAgentIsNotUndoneEither)
{
    agent = startAgentByHand();
    waitForStarts(1);
    agent->signal(SIGUSR1);
    ASSERT_EQ(agent->waitForExitStatus(PATIENCE), 0);
    helper = startHelperFromAgent();

    EXPECT_TRUE(endsWithZero(helper)) << errors();
    EXPECT_EQ(starts().size(), 1U);
}

TEST_F(Helper, AnExitWithStatusZeroOfAnAgentThatItStartedIsNotUndoneEither)
{
    helper = startHelperAtLogin();
    ASSERT_EQ(::kill(waitForStarts(1)[0].process, SIGUSR1), 0);

    EXPECT_TRUE(endsWithZero(helper)) << errors();
    EXPECT_EQ(starts().size(), 1U);
}

TEST_F(Helper, TheNextAgentAfterADeliberateEndGetsAHelperThatWorks)
{
    startPair();
    agent->signal(SIGUSR1);
    EXPECT_TRUE(endsWithZero(helper));

    agent = startAgentByHand();
    waitForStarts(2);
    helper = startHelperFromAgent();
    waitUntilHelperWatches();
    agent->signal(SIGKILL);
    waitForStarts(3);
}

TEST_F(Helper, ASecondHelperEndsWithZeroAndLeavesTheFirstAtWork)
{
    startPair();
    EXPECT_TRUE(endsWithZero(startHelperFromAgent()));
    EXPECT_TRUE(endsWithZero(startHelperAtLogin()));

    EXPECT_TRUE(helper->isRunning());
    agent->signal(SIGKILL);
    waitForStarts(2);
}

TEST_F(Helper, ANewHelperTakesOverAfterTheFirstWasKilled)
{
    startPair();
    helper->signal(SIGKILL);
    helper->waitForEnd(PATIENCE);
    helper = startHelperFromAgent();
    waitUntilHelperWatches();

    agent->signal(SIGKILL);
    waitForStarts(2);
}

TEST_F(Helper, AnAgentThatTheUserStartedMeanwhileIsWatchedInstead)
{
    startPair();
    stopHelper();
    agent->signal(SIGKILL);
    agent->waitForEnd(PATIENCE);
    agent = startAgentByHand();
    waitForStarts(2);
    helper->signal(SIGCONT);
    waitUntilHelperWatches();

    agent->signal(SIGKILL);
    const AgentStart third = waitForStarts(3)[2];
    EXPECT_THAT(third.argument, StartsWith("-psn_"));
}

TEST_F(Helper, TerminationSignalEndsItQuietlyAndTheAgentLivesOn)
{
    startPair();
    helper->signal(SIGTERM);

    EXPECT_TRUE(endsWithZero(helper)) << errors();
    EXPECT_TRUE(agent->isRunning());
    EXPECT_EQ(starts().size(), 1U);
}

TEST_F(Helper, NothingIsStartedWhenItIsToldToEndTogetherWithTheAgent)
{
    startPair();
    stopHelper();
    agent->signal(SIGKILL);
    agent->waitForEnd(PATIENCE);
    helper->signal(SIGTERM);
    helper->signal(SIGCONT);

    EXPECT_TRUE(endsWithZero(helper)) << errors();
    EXPECT_EQ(starts().size(), 1U);
}

TEST_F(Helper, ADisplayThatGoesAwayEndsItBeforeItBringsBackTheAgent)
{
    auto server = std::make_unique<desktop::PrivateXServer>();
    environment["DISPLAY"] = server->displayName();
    startPair();
    // Its ear, its line to the agent, and the display.
    ASSERT_TRUE(desktop::waitUntil([&] { return helperHolds("socket:") == 3; }, PATIENCE));
    stopHelper();
    agent->signal(SIGKILL);
    agent->waitForEnd(PATIENCE);
    server.reset();
    helper->signal(SIGCONT);

    EXPECT_TRUE(endsWithZero(helper)) << errors();
    EXPECT_EQ(starts().size(), 1U);
}

TEST_F(Helper, WithoutAnAgentToStartItSaysSoAndSleepsUntilSomebodyStartsOne)
{
    std::filesystem::rename(agentPath(), bundle() / "elsewhere");
    helper = startHelperAtLogin();
    ASSERT_TRUE(desktop::waitUntil(
        [&] { return errors().find("cannot be started") != std::string::npos; }, PATIENCE
    ));
    EXPECT_THAT(errors(), HasSubstr(agentPath().string() + ": No such file or directory"));

    const long before = ticksOf(helper->id());
    EXPECT_TRUE(
        desktop::holdsFor([&] { return helper->isRunning(); }, std::chrono::milliseconds(500))
    );
    EXPECT_LE(ticksOf(helper->id()) - before, 1);

    std::filesystem::rename(bundle() / "elsewhere", agentPath());
    agent = startAgentByHand();
    waitForStarts(1);
    waitUntilHelperWatches();
    agent->signal(SIGKILL);
    waitForStarts(2);
}
