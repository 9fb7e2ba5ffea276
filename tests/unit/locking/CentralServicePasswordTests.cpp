#include "CentralServiceFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(CentralService, RightPasswordUnmarksThenFocusesThenUnlocks)
{
    connectScreens(3);
    begin();
    lockAlpha();

    lockWindows.type("secret");

    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "userDefaults removeObject cbaal",
            "userDefaults synchronize",
            "workspace activate 100 2",
            "window 1 close",
            "window 2 close",
            "application setPresentationOptions 0x0",
            "lock 1 teardown",
            "lock 1 close"
        )
    );
    EXPECT_EQ(platform.windows.visibleCount(), 0);
    EXPECT_EQ(mark(), std::nullopt);
}

TEST_F(CentralService, WrongPasswordKeepsTheLockAndDisplaysAnEmptyError)
{
    connectScreens(2);
    begin();
    lockAlpha();

    const auto refusal = ElementsAre("lock 1 displayErrorMessage ''");
    EXPECT_THAT(callsOfTyping("Secret"), refusal);
    EXPECT_THAT(callsOfTyping(" secret"), refusal);
    EXPECT_THAT(callsOfTyping("secret "), refusal);
    EXPECT_THAT(callsOfTyping("secre"), refusal);
    EXPECT_THAT(callsOfTyping(""), refusal);
    EXPECT_TRUE(lockWindows.isLocked());
    EXPECT_EQ(platform.windows.visibleCount(), 1);
    EXPECT_EQ(mark(), "org.a");
    EXPECT_THAT(platform.log.lines, IsEmpty());
}

TEST_F(CentralService, ThePasswordIsComparedCanonically)
{
    fakes::storeSecret(platform, "Password", "caf\u00E9");
    begin();
    lockAlpha();

    lockWindows.type("cafe");
    EXPECT_TRUE(lockWindows.isLocked());
    lockWindows.type("cafe\u0301");
    EXPECT_FALSE(lockWindows.isLocked());
}

TEST_F(CentralService, APasswordOfBlanksOpensOnlyWithAsManyBlanks)
{
    fakes::storeSecret(platform, "Password", "  ");
    begin();
    lockAlpha();

    lockWindows.type("");
    lockWindows.type(" ");
    EXPECT_TRUE(lockWindows.isLocked());
    lockWindows.type("  ");
    EXPECT_FALSE(lockWindows.isLocked());
}

TEST_F(CentralService, APasswordWithoutACachedOneStopsTheProcess)
{
    begin();
    lockAlpha();
    service->PASSWORD.reset();

    EXPECT_DEATH(lockWindows.type("secret"), "PASSWORD is empty where it is needed");
}

TEST_F(CentralService, TheTypedPasswordIsNeverLogged)
{
    begin();
    lockAlpha();

    lockWindows.type("wrong");
    lockWindows.type("secret");

    EXPECT_THAT(platform.log.lines, IsEmpty());
    EXPECT_THAT(platform.log.diagnostics, IsEmpty());
}

TEST_F(CentralService, AKeychainThatFailsWhileLockedDoesNotOpenTheLockForAnEmptyText)
{
    begin();
    lockAlpha();
    platform.keychainItems.failing = true;
    touchSettings();

    lockWindows.type("");

    EXPECT_TRUE(lockWindows.isLocked());
    EXPECT_EQ(mark(), "org.a");
}

TEST_F(CentralService, AKeychainThatFailsLeavesTheLastKnownPasswordInForce)
{
    begin();
    lockAlpha();
    platform.keychainItems.failing = true;
    touchSettings();

    lockWindows.type("secret");

    EXPECT_FALSE(lockWindows.isLocked());
}

TEST_F(CentralService, AKeychainThatFailsLeavesTheProtectedListInForceAndSaysSo)
{
    begin();
    platform.keychainItems.failing = true;

    touchSettings();

    EXPECT_THAT(monitored(), ElementsAre("org.a"));
    EXPECT_THAT(
        platform.log.diagnostics,
        ElementsAre("The settings cannot be read; protection goes on with those last known")
    );
    EXPECT_THAT(platform.log.lines, IsEmpty());
    platform.workspace.startLaunching(alpha);
    EXPECT_TRUE(lockWindows.isLocked());
}

TEST_F(CentralService, AKeychainThatAnswersAgainIsReadAgain)
{
    begin();
    platform.keychainItems.failing = true;
    touchSettings();
    platform.keychainItems.failing = false;
    fakes::storeSecret(platform, "Password", "another");
    fakes::storeSecret(platform, "Applications", "org.b;");

    touchSettings();

    EXPECT_THAT(monitored(), ElementsAre("org.b"));
    EXPECT_EQ(service->PASSWORD, "another");
}

TEST_F(CentralService, WithoutAnyKnownPasswordNoTextOpensTheLock)
{
    begin();
    lockAlpha();
    platform.keychainItems.items.clear();
    service->PASSWORD = "";

    lockWindows.type("");
    lockWindows.type("secret");

    EXPECT_TRUE(lockWindows.isLocked());
}

TEST_F(CentralService, APasswordThatCouldNotBeReadAtFirstIsReadWhenItIsNeeded)
{
    platform.keychainItems.failing = true;
    service.emplace(lockWindows.factory(), settings);
    platform.keychainItems.failing = false;
    service->start();
    service->MONITORED_APPS = settings.getLockedApplications();
    platform.workspace.startLaunching(alpha);
    ASSERT_EQ(service->PASSWORD, "");

    lockWindows.type("");
    EXPECT_TRUE(lockWindows.isLocked());
    lockWindows.type("secret");
    EXPECT_FALSE(lockWindows.isLocked());
}
