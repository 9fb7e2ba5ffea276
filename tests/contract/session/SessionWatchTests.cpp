// What somebody who watches the first learns of it.
#include "SessionInstanceTest.h"

#include <csignal>

#include <sys/wait.h>

TEST_F(SessionInstance, NobodyIsWatchedWhereNobodyRuns)
{
    EXPECT_EQ(session::SessionWatch::open(NAME), nullptr);

    startFirst()->kill();
    EXPECT_EQ(session::SessionWatch::open(NAME), nullptr);
}

TEST_F(SessionInstance, WatcherKnowsTheProcess)
{
    const auto first = startFirst();
    const auto watch = session::SessionWatch::open(NAME);

    ASSERT_NE(watch, nullptr);
    EXPECT_EQ(watch->processIdentifier(), first->process().id());
    EXPECT_FALSE(watch->hasEnded());
    EXPECT_EQ(watch->exitStatus(), std::nullopt);
}

TEST_F(SessionInstance, WatcherLearnsTheStatusOfEveryWayThroughExit)
{
    EXPECT_EQ(statusAfter("exit 0"), 0);
    EXPECT_EQ(statusAfter("exit 3"), 3);
    EXPECT_EQ(statusAfter("return 4"), 4);
    EXPECT_EQ(statusAfter("announce 0"), 0);
}

TEST_F(SessionInstance, WatcherLearnsNoStatusOfAProcessThatDidNotExit)
{
    EXPECT_EQ(statusAfter("abort"), std::nullopt);
    EXPECT_EQ(statusAfter("_exit 0"), std::nullopt);

    const auto first = startFirst();
    const auto watch = session::SessionWatch::open(NAME);
    ASSERT_NE(watch, nullptr);
    first->process().signal(SIGKILL);
    EXPECT_EQ(statusAtEnd(*watch), std::nullopt);
}

TEST_F(SessionInstance, NameIsFreeAsSoonAsTheWatcherKnowsOfTheEnd)
{
    for (int round = 0; round < 20; ++round) {
        const auto first = startFirst();
        const auto watch = session::SessionWatch::open(NAME);
        ASSERT_NE(watch, nullptr);
        first->process().signal(SIGKILL);
        pollEnd(*watch);
        EXPECT_EQ(start()->hear(), "first");
    }
}

TEST_F(SessionInstance, AForkDoesNotSpeakForTheFirst)
{
    const auto first = startFirst();
    const auto watch = session::SessionWatch::open(NAME);
    ASSERT_NE(watch, nullptr);

    first->say("fork");
    EXPECT_EQ(first->hear(), "forked");
    EXPECT_EQ(watch->exitStatus(), std::nullopt);
    first->say("exit 3");
    EXPECT_EQ(statusAtEnd(*watch), 3);
}

TEST_F(SessionInstance, AWatcherThatWasNotLetInYetLearnsTheStatusToo)
{
    const auto first = startFirst();
    first->process().signal(SIGSTOP);
    const auto watch = session::SessionWatch::open(NAME);
    ASSERT_NE(watch, nullptr);

    first->say("exit 3");
    first->process().signal(SIGCONT);
    EXPECT_EQ(statusAtEnd(*watch), 3);
}

TEST_F(SessionInstance, AWatcherThatManyOthersPushedOutLearnsTheStatusToo)
{
    const auto first = startFirst();
    const auto watch = session::SessionWatch::open(NAME);
    ASSERT_NE(watch, nullptr);
    std::vector<descriptors::FileDescriptor> idle;
    for (int i = 0; i < 31; ++i) {
        idle.push_back(session::connectTo(socketPath()));
    }
    EXPECT_EQ(start()->hear(), "already running"); // the first has let in all of them by then
    idle.push_back(session::connectTo(socketPath()));
    const auto late = session::SessionWatch::open(NAME);
    ASSERT_NE(late, nullptr);

    first->say("exit 3");
    EXPECT_EQ(statusAtEnd(*watch), 3);
    EXPECT_EQ(statusAtEnd(*late), 3);
}

TEST_F(SessionInstance, TheStatusOfTheLatestIsLeftBehindUntilTheNextTakesTheName)
{
    EXPECT_EQ(session::SessionWatch::latestExitStatus(NAME), std::nullopt);
    statusAfter("exit 3");
    EXPECT_EQ(session::SessionWatch::latestExitStatus(NAME), 3);
    statusAfter("announce 0");
    EXPECT_EQ(session::SessionWatch::latestExitStatus(NAME), 0);

    const auto next = startFirst();
    EXPECT_EQ(session::SessionWatch::latestExitStatus(NAME), std::nullopt);
    next->process().signal(SIGKILL);
    next->process().waitForEnd(processes::PATIENCE);
    EXPECT_EQ(session::SessionWatch::latestExitStatus(NAME), std::nullopt);
}

TEST_F(SessionInstance, WatchersThatNeverReadOrHaveGoneDoNotDisturbTheEnd)
{
    const auto first = startFirst();
    std::vector<std::unique_ptr<session::SessionWatch>> watches;
    watches.reserve(60);
    for (int i = 0; i < 60; ++i) {
        watches.push_back(session::SessionWatch::open(NAME));
    }
    watches.resize(20);

    first->say("exit 3");
    const std::optional<int> status = first->process().waitForEnd(processes::PATIENCE);
    ASSERT_TRUE(status.has_value());
    EXPECT_TRUE(WIFEXITED(*status));
    EXPECT_EQ(WEXITSTATUS(*status), 3);
}
