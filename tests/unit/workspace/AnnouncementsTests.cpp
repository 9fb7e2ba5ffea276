// What observers are told, and in which order.
#include "WorkspaceTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workspace::known;
using workspace::process;
using Announcements = workspace::WorkspaceTest;

} // namespace

TEST_F(Announcements, WhatRanBeforeIsInTheListWithoutAnyNotification)
{
    processes.all.push_back(process(10, "mousepad"));
    processes.all.push_back(process(11, "nobody"));
    windows.windows.push_back({10, "mousepad", "mousepad"});
    start();

    EXPECT_TRUE(ready);
    ASSERT_EQ(desktop.runningApplications().size(), 1U);
    EXPECT_EQ(desktop.runningApplications().front().bundleIdentifier, "mousepad");
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Announcements, AnotherWindowOfWhatRanBeforeIsNoLaunch)
{
    processes.all.push_back(process(10, "mousepad"));
    windows.windows.push_back({10, "mousepad", "mousepad", "", 1});
    start();
    windows.show({10, "mousepad", "mousepad", "", 2});

    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Announcements, FirstWindowOfWhatRanHiddenBeforeIsALaunch)
{
    processes.all.push_back(process(10, "mousepad"));
    start();
    windows.show({10, "mousepad", "mousepad"});

    EXPECT_THAT(heard, ElementsAre("will launch mousepad", "did launch mousepad"));
}

TEST_F(Announcements, HintOfWhatRunsIsALaunch)
{
    start();
    exec(10, "mousepad");
    windows.show({10, "mousepad", "mousepad"});
    heard.clear();
    windows.onLaunchHint("mousepad");
    exec(20, "mousepad");

    EXPECT_THAT(heard, ElementsAre("will launch mousepad", "inserted mousepad"));
}

TEST_F(Announcements, HintOfWhatEndsBeforeTheExecLeavesTheExecALaunch)
{
    start();
    exec(10, "mousepad");
    windows.show({10, "mousepad", "mousepad"});
    windows.onLaunchHint("mousepad");
    exit(10);
    heard.clear();
    exec(20, "mousepad");

    EXPECT_THAT(heard, ElementsAre("inserted mousepad", "will launch mousepad"));
}

TEST_F(Announcements, HintOfWhatIsHiddenAndShowsNothingLeavesItsWindowALaunch)
{
    processes.all.push_back(process(10, "agentless"));
    start();
    windows.onLaunchHint("agentless");
    windows.show({10, "agentless", "agentless"});

    EXPECT_THAT(heard, ElementsAre("will launch agentless", "did launch agentless"));
}

TEST_F(Announcements, StartWhoseWindowIsAwaitedIsALaunchAgainAfterAnEarlierOneEnds)
{
    start();
    exec(10, "xterm");
    windows.show({10, "xterm", "XTerm"});
    exec(20, "xterm");
    heard.clear();
    exit(10);

    EXPECT_THAT(heard, ElementsAre("removed xterm", "did terminate xterm", "will launch xterm"));
}

TEST_F(Announcements, EndOfALaterStartIsNoLaunchOfTheEarlierOne)
{
    start();
    exec(10, "xterm");
    exec(20, "xterm");
    windows.show({20, "xterm", "XTerm"});
    heard.clear();
    exit(20);

    EXPECT_THAT(heard, ElementsAre("removed xterm", "did terminate xterm"));
}

TEST_F(Announcements, RegularStartIsListedThenAnnouncedThenLaunchedThenTerminated)
{
    start();
    exec(10, "mousepad");
    windows.show({10, "mousepad", "mousepad"});
    exit(10);

    EXPECT_THAT(
        heard,
        ElementsAre(
            "inserted mousepad",
            "will launch mousepad",
            "did launch mousepad",
            "removed mousepad",
            "did terminate mousepad"
        )
    );
}

TEST_F(Announcements, AccessoryIsOnlySeenToComeAndGoInTheList)
{
    start();
    exec(10, "agentless");
    exit(10);

    EXPECT_THAT(heard, ElementsAre("inserted agentless", "removed agentless"));
}

TEST_F(Announcements, HandOverToALivingInstanceIsNoTermination)
{
    start();
    exec(10, "mousepad");
    windows.show({10, "mousepad", "mousepad"});
    exec(20, "mousepad");
    heard.clear();
    exit(20);

    EXPECT_THAT(heard, IsEmpty());
    EXPECT_EQ(desktop.runningApplications("mousepad").size(), 1U);
}

TEST_F(Announcements, ActivationIsReportedByApplicationOldOneFirst)
{
    start();
    exec(10, "mousepad");
    exec(20, "xterm");
    heard.clear();
    windows.onActiveChanged(10, 0);
    windows.onActiveChanged(20, 0);
    windows.onActiveChanged(0, 0);

    EXPECT_THAT(
        heard,
        ElementsAre(
            "did activate mousepad",
            "did deactivate mousepad",
            "did activate xterm",
            "did deactivate xterm"
        )
    );
}

TEST_F(Announcements, EndOfAStartIsNotToldWhereWhatRunsTheSameProgramMayHaveTakenItOver)
{
    startOffice();
    exec(20, "calc");
    heard.clear();
    exit(20);

    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(Announcements, EndOfAStartIsToldThoughTheSameLauncherRunsAnotherApplication)
{
    startOffice();
    index.launched = true;
    exec(20, "calc");
    heard.clear();
    exit(20);

    EXPECT_THAT(heard, ElementsAre("removed calc", "did terminate calc"));
}

TEST_F(Announcements, ActivationIsOfTheApplicationWhoseWindowIsInFront)
{
    startOffice();
    windows.show({10, "writer", "writer", "", 1});
    windows.show({10, "calc", "calc", "", 2});
    heard.clear();
    windows.onActiveChanged(10, 2);
    windows.onActiveChanged(10, 1);

    EXPECT_THAT(
        heard, ElementsAre("did activate calc", "did deactivate calc", "did activate writer")
    );
}
