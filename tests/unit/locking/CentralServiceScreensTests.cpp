#include "CentralServiceFixture.h"
#include "locking/CoveringWindow.h"

#include <csignal>
#include <cstdlib>
#include <functional>

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(CentralService, TheMainScreenGetsThePasswordWindowAndEveryOtherOneACover)
{
    connectScreens(3);
    begin();

    lockAlpha();

    EXPECT_EQ(lockWindows.count, 1);
    EXPECT_EQ(platform.windows.visibleCount(), 2);
    EXPECT_EQ(
        platform.windows.windows.at(1).attributes,
        locking::coveringWindowAttributes(fakes::FakeScreens::screen(1).frame)
    );
    EXPECT_EQ(
        platform.windows.windows.at(2).attributes,
        locking::coveringWindowAttributes(fakes::FakeScreens::screen(2).frame)
    );
}

TEST_F(CentralService, CoversAreAllMadeBeforeTheFirstIsShown)
{
    connectScreens(3);
    begin();

    platform.workspace.startLaunching(alpha);

    platform.calls.resize(4);
    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "windows create 1",
            "windows create 2",
            "window 1 makeKeyAndOrderFront",
            "window 2 makeKeyAndOrderFront"
        )
    );
}

TEST_F(CentralService, AScreenUnpluggedWhileLockedRebuildsTheLockAtTheNextCheck)
{
    connectScreens(2);
    begin();
    lockAlpha();
    connectScreens(1);
    EXPECT_THAT(platform.calls, IsEmpty());

    platform.timers.fireAll();

    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "window 1 close",
            "application setPresentationOptions 0x0",
            "lock 1 teardown",
            "lock 1 close",
            "lock 2 create",
            "lock 1 destroy",
            "userDefaults setValue cbaal org.a",
            "userDefaults synchronize",
            "lock 2 showServiceWindow Alpha is locked"
        )
    );
    EXPECT_TRUE(lockWindows.isLocked());
    EXPECT_EQ(platform.windows.visibleCount(), 0);
    EXPECT_EQ(mark(), "org.a");
}

TEST_F(CentralService, AScreenPluggedInWhileLockedIsCoveredAtTheNextCheck)
{
    begin();
    lockAlpha();
    connectScreens(2);

    platform.timers.fireAll();

    EXPECT_TRUE(lockWindows.isLocked());
    EXPECT_EQ(platform.windows.visibleCount(), 1);
    lockWindows.type("secret");
    EXPECT_FALSE(lockWindows.isLocked());
    EXPECT_EQ(platform.windows.visibleCount(), 0);
}

TEST_F(CentralService, ScreensThatChangePlacesWhileLockedTakeTheLockAlong)
{
    connectScreens(2);
    begin();
    lockAlpha();
    const platform::Screen first = fakes::FakeScreens::screen(0);
    const platform::Screen second = fakes::FakeScreens::screen(1);

    platform.screens.arrange({{{first.identifier, second.frame}, {second.identifier, first.frame}}}
    );

    EXPECT_THAT(
        platform.calls,
        ElementsAre("windows create 2", "window 2 makeKeyAndOrderFront", "lock 1 screensChanged")
    );
    EXPECT_EQ(platform.windows.visibleCount(), 1);
    EXPECT_EQ(
        platform.windows.windows.at(2).attributes, locking::coveringWindowAttributes(first.frame)
    );
    forgetWhatHappened();
    platform.timers.fireAll();
    EXPECT_THAT(platform.calls, IsEmpty());
}

TEST_F(CentralService, AnotherMainScreenWhileLockedIsUncoveredForTheLockAndTheEarlierOneCovered)
{
    connectScreens(2);
    begin();
    lockAlpha();

    platform.screens.arrange({{fakes::FakeScreens::screen(1), fakes::FakeScreens::screen(0)}});

    EXPECT_EQ(
        platform.windows.windows.at(2).attributes,
        locking::coveringWindowAttributes(fakes::FakeScreens::screen(0).frame)
    );
    EXPECT_EQ(platform.windows.visibleCount(), 1);
    EXPECT_EQ(platform.calls.back(), "lock 1 screensChanged");
}

TEST_F(CentralService, AnotherNumberOfScreensIsLeftToTheCheck)
{
    connectScreens(2);
    begin();
    lockAlpha();

    platform.screens.arrange({{fakes::FakeScreens::screen(0)}});

    EXPECT_THAT(platform.calls, IsEmpty());
}

TEST_F(CentralService, ScreensThatMoveWithoutALockChangeNothing)
{
    connectScreens(2);
    begin();

    platform.screens.arrange({{fakes::FakeScreens::screen(1), fakes::FakeScreens::screen(0)}});

    EXPECT_THAT(platform.calls, IsEmpty());
}

TEST_F(CentralService, ADesktopThatCannotBeAskedMovesNoLock)
{
    begin();
    lockAlpha();

    platform.screens.arrange(std::nullopt);

    EXPECT_THAT(platform.calls, IsEmpty());
    EXPECT_TRUE(lockWindows.isLocked());
}

TEST_F(CentralService, ChecksWithoutAChangeDoNothing)
{
    connectScreens(2);
    begin();
    lockAlpha();

    platform.timers.fireAll();
    platform.timers.fireAll();

    EXPECT_THAT(platform.calls, IsEmpty());
}

TEST_F(CentralService, AChangeIsActedOnOnce)
{
    begin();
    lockAlpha();
    connectScreens(2);
    platform.timers.fireAll();
    forgetWhatHappened();

    platform.timers.fireAll();

    EXPECT_THAT(platform.calls, IsEmpty());
}

TEST_F(CentralService, AChangeWithoutALockIsOnlyRemembered)
{
    begin();
    connectScreens(2);
    platform.timers.fireAll();
    EXPECT_THAT(platform.calls, IsEmpty());

    lockAlpha();
    platform.timers.fireAll();

    EXPECT_THAT(platform.calls, IsEmpty());
}

TEST_F(CentralService, AChangeAfterTheLockWasLiftedLocksNothing)
{
    begin();
    lockAlpha();
    lockWindows.type("secret");
    connectScreens(2);
    forgetWhatHappened();

    platform.timers.fireAll();

    EXPECT_THAT(platform.calls, IsEmpty());
    EXPECT_FALSE(lockWindows.isLocked());
}

TEST_F(CentralService, AMissingListOfScreensIsAChange)
{
    begin();
    platform.screens.list.reset();
    service->checkScreensChange();
    EXPECT_THAT(platform.calls, IsEmpty());

    connectScreens(1);
    lockAlpha();
    service->checkScreensChange();

    EXPECT_EQ(lockWindows.count, 2);
    EXPECT_TRUE(lockWindows.isLocked());
}

namespace {

std::function<bool()> isMarked;

} // namespace

TEST_F(CentralService, ALockThatMissesTheListOfScreensIsMarkedBeforeItStopsTheProcess)
{
    begin();
    platform.screens.list.reset();
    isMarked = [this] { return mark() == "org.a"; };

    EXPECT_EXIT(
        {
            std::signal(SIGABRT, [](int /*signal*/) { std::_Exit(isMarked() ? 0 : 3); });
            platform.workspace.startLaunching(alpha);
        },
        testing::ExitedWithCode(0),
        "the screens to cover are not known"
    );
}

TEST_F(CentralService, AMissingListOfScreensWhileLockedStopsTheProcess)
{
    begin();
    lockAlpha();
    platform.screens.list.reset();

    EXPECT_DEATH(platform.timers.fireAll(), "the screens to cover are not known");
}
