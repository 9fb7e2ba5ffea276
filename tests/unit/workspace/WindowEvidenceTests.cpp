// What windows that come and go tell.
#include "TrackerTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workspace::known;
using workspace::process;
using TrackerWindows = workspace::TrackerTest;

} // namespace

TEST_F(TrackerWindows, ProcessThatExecutedTwoApplicationsShowsTheWindowOfBoth)
{
    start(10, "uxterm");
    start(10, "xterm");
    tracker.windowShown(tracker.instances().ofProcessAs("uxterm", 10), 1);

    EXPECT_THAT(
        said, ElementsAre("started uxterm", "started xterm", "window uxterm", "window xterm")
    );
}

TEST_F(TrackerWindows, WhatRanBeforeIsListedAndItsWindowsAreNoNews)
{
    tracker.alreadyRunning({process(10, "mousepad"), known("mousepad"), {}});
    tracker.windowThere(tracker.instances().ofProcess(10), 1);
    show(10, 2);

    EXPECT_THAT(said, IsEmpty());
    EXPECT_EQ(tracker.instances().all().size(), 1U);
    end(10);
    EXPECT_THAT(said, ElementsAre("ended mousepad"));
}

TEST_F(TrackerWindows, WhatRanHiddenBeforeStartsWithItsFirstWindow)
{
    tracker.alreadyRunning({process(10, "mousepad"), known("mousepad"), {}});
    show(10);

    EXPECT_THAT(said, ElementsAre("started again mousepad", "window mousepad"));
}

TEST_F(TrackerWindows, SecondWindowIsNoNews)
{
    start(10, "mousepad");
    show(10, 1);
    said.clear();
    show(10, 2);
    tracker.windowGone(1);
    show(10, 3);

    EXPECT_THAT(said, IsEmpty());
}

TEST_F(TrackerWindows, WindowAfterAWindowOfProgressIsNoNews)
{
    start(10, "gimp");
    show(10, 1);
    tracker.windowGone(1);
    time += std::chrono::seconds(3);
    said.clear();
    show(10, 2);

    EXPECT_THAT(said, IsEmpty());
}

TEST_F(TrackerWindows, HiddenInstanceThatAppearsStartsAgain)
{
    start(10, "keepassxc");
    show(10, 1);
    tracker.windowGone(1);
    time += std::chrono::seconds(30);
    said.clear();
    show(10, 2);

    EXPECT_THAT(said, ElementsAre("started again keepassxc", "window keepassxc"));
}

TEST_F(TrackerWindows, WindowLongAfterTheStartIsAStartOfItsOwn)
{
    start(10, "service");
    time += std::chrono::minutes(10);
    said.clear();
    show(10, 1);

    EXPECT_THAT(said, ElementsAre("started again service", "window service"));
}

TEST_F(TrackerWindows, WindowThatNothingAnnouncedIsAStart)
{
    showOf(10, "mousepad", 1);
    EXPECT_THAT(said, ElementsAre("started mousepad", "window mousepad"));
    tracker.windowGone(1);
    end(10);
    EXPECT_EQ(said.back(), "ended mousepad");
}

TEST_F(TrackerWindows, WindowOfAnotherApplicationInTheSameProcessIsAStart)
{
    start(10, "writer");
    show(10, 1);
    showOf(10, "calc", 2);
    showOf(10, "calc", 3);

    EXPECT_THAT(
        said, ElementsAre("started writer", "window writer", "started calc", "window calc")
    );
}

TEST_F(TrackerWindows, GuestEndsWithItsLastWindow)
{
    start(10, "writer");
    show(10, 1);
    showOf(10, "calc", 2);
    showOf(10, "calc", 3);
    tracker.windowGone(2);
    EXPECT_EQ(said.back(), "window calc");
    tracker.windowGone(3);
    EXPECT_EQ(said.back(), "ended calc");

    said.clear();
    showOf(10, "calc", 4);
    EXPECT_THAT(said, ElementsAre("started calc", "window calc"));
}

TEST_F(TrackerWindows, GuestEndsWithItsProcess)
{
    start(10, "writer");
    show(10, 1);
    showOf(10, "calc", 2);
    said.clear();
    end(10);

    EXPECT_THAT(said, ElementsAre("ended writer", "ended calc"));
}

TEST_F(TrackerWindows, WindowThatChangesItsClassChangesItsApplication)
{
    start(10, "writer");
    show(10, 1);
    showOf(10, "calc", 1);

    EXPECT_THAT(tracker.instances().ofProcessAs("writer", 10)->windows, IsEmpty());
    EXPECT_EQ(tracker.instances().ofProcessAs("calc", 10)->windows.size(), 1U);
}
