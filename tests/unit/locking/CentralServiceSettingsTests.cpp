#include "CentralServiceFixture.h"

using testing::ElementsAre;

TEST_F(CentralService, TheAdministrativeGroupIsAppendedWithoutRemovingDuplicates)
{
    fakes::installApplication(platform, "com.apple.Terminal", "Terminal");
    fakes::installApplication(platform, "com.apple.ActivityMonitor", "A Monitor");
    fakes::storeSecret(platform, "Applications", "org.b;com.apple.Terminal;org.a;");

    begin();

    EXPECT_THAT(
        monitored(),
        ElementsAre(
            "org.a",
            "org.b",
            "com.apple.Terminal",
            "com.apple.Terminal",
            "com.apple.ActivityMonitor"
        )
    );
}

TEST_F(CentralService, AChangeOfTheListCountsAtOnce)
{
    begin();

    settings.addLockedApplicationBundleId("org.b");
    platform.workspace.startLaunching(beta);

    EXPECT_TRUE(lockWindows.isLocked());
}

TEST_F(CentralService, ASettingsChangeWhileLockedKeepsTheLockAsItIs)
{
    connectScreens(2);
    begin();
    lockAlpha();

    settings.setLockAdministrativeApplications(false);
    settings.removeLockedApplicationBundleId("org.a");

    EXPECT_TRUE(lockWindows.isLocked());
    EXPECT_EQ(lockWindows.count, 1);
    EXPECT_EQ(platform.windows.visibleCount(), 1);
    EXPECT_EQ(mark(), "org.a");
}

TEST_F(CentralService, APasswordChangedWhileLockedCountsFromTheNextAttemptOn)
{
    begin();
    lockAlpha();

    settings.setApplicationPassword("another");

    lockWindows.type("secret");
    EXPECT_TRUE(lockWindows.isLocked());
    lockWindows.type("another");
    EXPECT_FALSE(lockWindows.isLocked());
}

TEST_F(CentralService, SwitchingProtectionOffDoesNotLiftALockAndStopsTheTerminationRule)
{
    begin();
    lockAlpha();

    settings.setApplicationIsActive(false);
    EXPECT_TRUE(lockWindows.isLocked());
    platform.workspace.terminate(alpha);
    EXPECT_TRUE(lockWindows.isLocked());

    lockWindows.type("secret");
    EXPECT_FALSE(lockWindows.isLocked());
    platform.workspace.startLaunching(alpha);
    EXPECT_FALSE(lockWindows.isLocked());
}

TEST_F(CentralService, RemovingThePasswordDoesNotStopMonitoring)
{
    begin();

    settings.setApplicationPassword("");
    platform.workspace.startLaunching(alpha);

    EXPECT_TRUE(lockWindows.isLocked());
    EXPECT_EQ(platform.timers.timers.size(), 1U);
}
