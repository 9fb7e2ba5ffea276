#include "CentralServiceFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(CentralService, AStartingProtectedApplicationIsLockedInOrder)
{
    connectScreens(2);
    begin();

    platform.workspace.startLaunching(alpha);

    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "windows create 1",
            "window 1 makeKeyAndOrderFront",
            "lock 1 create",
            "userDefaults setValue cbaal org.a",
            "userDefaults synchronize",
            "lock 1 showServiceWindow Alpha is locked"
        )
    );
    EXPECT_THAT(platform.log.lines, ElementsAre("Will start: Alpha"));
    EXPECT_EQ(lockWindows.latest->icon, alpha.icon);
    EXPECT_EQ(mark(), "org.a");
}

TEST_F(CentralService, AnApplicationThatIsNotProtectedIsOnlyLogged)
{
    begin();

    platform.workspace.startLaunching(beta);
    platform.workspace.finishLaunching(beta);
    platform.workspace.terminate(beta);

    EXPECT_THAT(
        platform.log.lines, ElementsAre("Will start: Beta", "Did start: Beta", "Terminated: Beta")
    );
    EXPECT_THAT(platform.calls, IsEmpty());
}

TEST_F(CentralService, IdentifiersAreComparedWithTheirCase)
{
    begin();

    platform.workspace.startLaunching(fakes::runningApplication(100, "ORG.A", "Alpha"));

    EXPECT_EQ(lockWindows.count, 0);
}

TEST_F(CentralService, WithProtectionSwitchedOffNothingIsLoggedAndNothingLocked)
{
    fakes::storeSecret(platform, "Active", "0");
    begin();

    platform.workspace.startLaunching(alpha);
    platform.workspace.finishLaunching(alpha);
    platform.workspace.terminate(alpha);

    EXPECT_THAT(platform.log.lines, IsEmpty());
    EXPECT_EQ(lockWindows.count, 0);
    EXPECT_EQ(mark(), std::nullopt);
}

TEST_F(CentralService, AProtectedAccessoryIsLockedToo)
{
    begin();

    platform.workspace.startLaunching(fakes::runningAccessory(100, "org.a", "Alpha"));

    EXPECT_TRUE(lockWindows.isLocked());
    EXPECT_EQ(platform.log.lines.at(0), "Will start: Alpha");
    EXPECT_EQ(platform.log.lines.at(1), "Did start: Alpha");
}

TEST_F(CentralService, ANamelessApplicationIsLockedWithoutAName)
{
    begin();
    alpha.localizedName.reset();

    platform.workspace.startLaunching(alpha);

    EXPECT_EQ(platform.calls.back(), "lock 1 showServiceWindow  is locked");
    EXPECT_THAT(platform.log.lines, ElementsAre("Will start: "));
}

TEST_F(CentralService, TheLockComesForwardWhenTheApplicationHasStarted)
{
    begin();
    lockAlpha();

    platform.workspace.finishLaunching(alpha);

    EXPECT_THAT(platform.calls, ElementsAre("lock 1 focus"));
    EXPECT_THAT(platform.log.lines, ElementsAre("Did start: Alpha"));
}

TEST_F(CentralService, AProtectedApplicationThatHasStartedWithoutALockStopsTheProcess)
{
    fakes::storeSecret(platform, "Active", "0");
    begin();
    platform.workspace.startLaunching(alpha);
    settings.setApplicationIsActive(true);

    EXPECT_DEATH(
        platform.workspace.finishLaunching(alpha),
        "passwordWindowController is empty where it is needed"
    );
}

TEST_F(CentralService, AFactoryWithoutALockWindowStopsTheProcess)
{
    service.emplace(noLockWindow, settings);
    service->start();

    EXPECT_DEATH(platform.workspace.startLaunching(alpha), "passwordWindowController is empty");
}

TEST_F(CentralService, TheSpecialKeyBringsTheLockedApplicationForwardAndKeepsTheLock)
{
    begin();
    lockAlpha();

    lockWindows.pressSpecialKey();

    EXPECT_THAT(platform.calls, ElementsAre("workspace activate 100 2"));
    EXPECT_TRUE(lockWindows.isLocked());
}

TEST_F(CentralService, ASecondStartLocksAnewForTheSecondApplication)
{
    fakes::storeSecret(platform, "Applications", "org.a;org.b;");
    connectScreens(2);
    begin();
    lockAlpha();

    platform.workspace.startLaunching(beta);

    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "windows create 2",
            "window 2 makeKeyAndOrderFront",
            "lock 2 create",
            "lock 1 destroy",
            "userDefaults setValue cbaal org.b",
            "userDefaults synchronize",
            "lock 2 showServiceWindow Beta is locked"
        )
    );
    EXPECT_EQ(platform.windows.visibleCount(), 1);
    EXPECT_EQ(mark(), "org.b");
}

TEST_F(CentralService, AfterASecondStartThePasswordBringsTheSecondApplicationForward)
{
    fakes::storeSecret(platform, "Applications", "org.a;org.b;");
    connectScreens(2);
    begin();
    lockAlpha();
    platform.workspace.startLaunching(beta);
    forgetWhatHappened();

    lockWindows.type("secret");

    EXPECT_EQ(platform.calls.at(2), "workspace activate 200 2");
    EXPECT_EQ(platform.windows.visibleCount(), 0);
    EXPECT_FALSE(lockWindows.isLocked());
    EXPECT_EQ(mark(), std::nullopt);
}

TEST_F(CentralService, TheEndOfTheLockedApplicationLiftsTheLockInOrder)
{
    connectScreens(2);
    begin();
    lockAlpha();

    platform.workspace.terminate(alpha);

    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "userDefaults removeObject cbaal",
            "userDefaults synchronize",
            "window 1 close",
            "application setPresentationOptions 0x0",
            "lock 1 teardown",
            "lock 1 close"
        )
    );
    EXPECT_THAT(platform.log.lines, ElementsAre("Terminated: Alpha"));
    EXPECT_EQ(mark(), std::nullopt);
}

TEST_F(CentralService, TheEndOfAnotherProtectedApplicationLiftsTheLockToo)
{
    fakes::storeSecret(platform, "Applications", "org.a;org.b;");
    platform.workspace.running = {beta};
    begin();
    lockAlpha();

    platform.workspace.terminate(beta);

    EXPECT_FALSE(lockWindows.isLocked());
    EXPECT_EQ(mark(), std::nullopt);
}

TEST_F(CentralService, TheEndOfAnyOtherApplicationKeepsTheLock)
{
    platform.workspace.running = {beta};
    begin();
    lockAlpha();

    platform.workspace.terminate(beta);

    EXPECT_TRUE(lockWindows.isLocked());
    EXPECT_THAT(platform.calls, IsEmpty());
}

TEST_F(CentralService, TheEndOfAProtectedApplicationBeforeAnyLockDoesNothing)
{
    platform.workspace.running = {alpha};
    begin();
    platform.userDefaults.values["cbaal"] = std::string("org.a");

    platform.workspace.terminate(alpha);

    EXPECT_THAT(platform.calls, IsEmpty());
    EXPECT_EQ(mark(), "org.a");
}

TEST_F(CentralService, TheEndOfAProtectedApplicationAfterALockClosesItsWindowsAgain)
{
    begin();
    lockAlpha();
    lockWindows.type("secret");
    forgetWhatHappened();

    platform.workspace.terminate(alpha);

    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "userDefaults removeObject cbaal",
            "userDefaults synchronize",
            "application setPresentationOptions 0x0",
            "lock 1 teardown",
            "lock 1 close"
        )
    );
}

TEST_F(CentralService, EventsBeforeTheFirstRefreshCannotBeJudgedAndStopTheProcess)
{
    begin();
    service->MONITORED_APPS.reset();

    EXPECT_DEATH(
        platform.workspace.startLaunching(alpha), "MONITORED_APPS is empty where it is needed"
    );
}

TEST_F(CentralService, AnAdministrativeApplicationIsLockedThoughNeverChosen)
{
    fakes::installApplication(platform, "com.apple.Terminal", "Terminal");
    begin();

    platform.workspace.startLaunching(
        fakes::runningApplication(400, "com.apple.Terminal", "Terminal")
    );

    EXPECT_TRUE(lockWindows.isLocked());
}

TEST_F(CentralService, AnApplicationThatPlaysAnAdministrativeRoleIsLockedUnderItsOwnIdentifier)
{
    fakes::installApplication(platform, "com.apple.Terminal", "Terminal");
    platform.workspace.roles["org.example.Term"] = "com.apple.Terminal";
    begin();

    platform.workspace.startLaunching(fakes::runningApplication(400, "org.example.Term", "Term"));

    EXPECT_EQ(platform.calls.back(), "lock 1 showServiceWindow Term is locked");
    EXPECT_EQ(mark(), "org.example.Term");
}

TEST_F(CentralService, WithTheOptionOffAnAdministrativeApplicationIsLockedOnlyWhenChosen)
{
    fakes::installApplication(platform, "com.apple.Terminal", "Terminal");
    fakes::storeSecret(platform, "Administrative", "0");
    begin();
    const auto terminal = fakes::runningApplication(400, "com.apple.Terminal", "Terminal");

    platform.workspace.startLaunching(terminal);
    EXPECT_FALSE(lockWindows.isLocked());

    settings.addLockedApplicationBundleId("com.apple.Terminal");
    platform.workspace.startLaunching(terminal);
    EXPECT_TRUE(lockWindows.isLocked());
}
