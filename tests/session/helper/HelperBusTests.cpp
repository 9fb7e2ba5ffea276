#include "HelperFixture.h"
#include "Notice.h"
#include "desktop/FakeNotifications.h"
#include "desktop/Wait.h"

#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

constexpr auto NOTICE = "TERMINATE_HELPER_TARVEL";
constexpr auto AGENT = "com.quorvent.Tarvel";

class HelperOnABus : public HelperFixture
{
protected:
    HelperOnABus() { startBus(); }
};

} // namespace

TEST_F(HelperOnABus, NoticeEndsItWithZeroWhileTheAgentLivesOn)
{
    startPair();
    EXPECT_TRUE(desktop::waitUntil(
        [&] {
            postNotice(bus->address(), NOTICE, AGENT);
            return !helper->isRunning();
        },
        PATIENCE
    ));

    EXPECT_TRUE(endsWithZero(helper)) << errors();
    EXPECT_TRUE(agent->isRunning());
    EXPECT_EQ(starts().size(), 1U);
}

TEST_F(HelperOnABus, NoticesOfOthersAreIgnored)
{
    startPair();
    EXPECT_TRUE(postNotice(bus->address(), NOTICE, "com.quorvent.Other"));
    EXPECT_TRUE(postNotice(bus->address(), NOTICE, ""));
    EXPECT_TRUE(postNotice(bus->address(), "TERMINATE_HELPER", AGENT));
    agent->signal(SIGKILL);

    waitForStarts(2);
    EXPECT_TRUE(helper->isRunning());
}

TEST_F(HelperOnABus, NoticeWinsOverTheStatusThatFollowsIt)
{
    for (std::size_t round = 1; round <= 10; ++round) {
        agent = startAgentByHand();
        waitForStarts(round);
        helper = startHelperFromAgent();
        waitUntilHelperWatches();
        agent->signal(SIGUSR2);

        EXPECT_TRUE(endsWithZero(helper)) << errors();
        EXPECT_EQ(starts().size(), round);
    }
}

TEST_F(HelperOnABus, AnAgentThatCannotLiveIsRestartedFiveTimesAndThenReported)
{
    desktop::FakeNotifications notifications(bus->address());
    setManner("dies");
    helper = startHelperAtLogin();

    EXPECT_TRUE(desktop::waitUntil([&] { return notifications.hasShown(1); }, PATIENCE));
    EXPECT_EQ(starts().size(), 6U) << "one at login, five again";
    ASSERT_EQ(notifications.notifications().size(), 1U);
    const auto& shown = notifications.notifications().front();
    EXPECT_EQ(shown.program, "Tarvel");
    EXPECT_EQ(shown.title, "Tarvel is not running");
    EXPECT_THAT(shown.text, HasSubstr("5 times within a minute"));
    EXPECT_THAT(errors(), HasSubstr("5 times within a minute"));
    EXPECT_TRUE(helper->isRunning());

    setManner("lives");
    agent = startAgentByHand();
    waitForStarts(7);
    waitUntilHelperWatches();
    agent->signal(SIGKILL);
    EXPECT_TRUE(desktop::waitUntil([&] { return notifications.hasShown(2); }, PATIENCE))
        << "it was watched, and five a minute are still used up";
    EXPECT_EQ(starts().size(), 7U);
}

TEST_F(HelperOnABus, WithoutTheBusItWorksOnAndFindsTheNextOne)
{
    startPair();
    bus->process().signal(SIGKILL);
    bus->process().waitForEnd(PATIENCE);
    agent->signal(SIGKILL);
    waitForStarts(2);

    startBus();
    EXPECT_TRUE(desktop::waitUntil(
        [&] {
            postNotice(bus->address(), NOTICE, AGENT);
            return !helper->isRunning();
        },
        PATIENCE
    )) << errors();
    EXPECT_TRUE(endsWithZero(helper));
    EXPECT_EQ(starts().size(), 2U);
}

TEST_F(HelperOnABus, ABusThatDoesNotAnswerDoesNotKeepTheAgentAway)
{
    startPair();
    bus->process().signal(SIGSTOP);
    agent->signal(SIGKILL);

    waitForStarts(2);
    bus->process().signal(SIGCONT);
}

TEST_F(HelperOnABus, WhatCouldNotBeShownIsShownWhenTheBusIsBack)
{
    const std::string address = bus->address();
    bus->process().signal(SIGKILL);
    bus->process().waitForEnd(PATIENCE);
    setManner("dies");
    helper = startHelperAtLogin();
    ASSERT_TRUE(desktop::waitUntil(
        [&] { return errors().find("not protected") != std::string::npos; }, PATIENCE
    ));

    stopHelper();
    startBus();
    desktop::FakeNotifications notifications(address);
    helper->signal(SIGCONT);
    EXPECT_TRUE(desktop::waitUntil([&] { return notifications.hasShown(1); }, PATIENCE));
    EXPECT_EQ(starts().size(), 6U);
}
