#include "CentralServiceFixture.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

TEST_F(CentralService, ReadsTheSettingsAtConstructionAndStartsNothing)
{
    service.emplace(lockWindows.factory(), settings);

    EXPECT_THAT(monitored(), ElementsAre("org.a"));
    EXPECT_EQ(service->PASSWORD, "secret");
    EXPECT_TRUE(platform.timers.timers.empty());
    EXPECT_THAT(platform.log.lines, IsEmpty());
    EXPECT_THAT(platform.calls, Not(Contains(HELPER_LAUNCH)));
}

TEST_F(CentralService, UsesTheSharedSettingsUnlessGivenOthers)
{
    fakes::storeSecret(platform, "Password", "shared");

    service.emplace(lockWindows.factory());

    EXPECT_EQ(service->PASSWORD, "shared");
}

TEST_F(CentralService, StartMonitorsThenStartsTheHelper)
{
    service.emplace(lockWindows.factory(), settings);
    forgetWhatHappened();

    service->start();

    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "keychain copyMatching com.quorvent.Tarvel (Password)",
            "workspace addKeyPathObserver runningApplications 3",
            "workspace addObserver willLaunch",
            "workspace addObserver didLaunch",
            "workspace addObserver didTerminate",
            HELPER_LAUNCH
        )
    );
    EXPECT_THAT(platform.log.lines, ElementsAre("Monitoring services started"));
}

TEST_F(CentralService, StartSchedulesOneScreenCheckEveryThreeSeconds)
{
    begin();

    ASSERT_EQ(platform.timers.timers.size(), 1U);
    EXPECT_DOUBLE_EQ(platform.timers.timers.front().seconds, 3.0);
    EXPECT_TRUE(platform.timers.timers.front().repeats);
}

TEST_F(CentralService, WithoutAPasswordNothingIsStarted)
{
    platform.keychainItems.items.clear();
    platform.workspace.running = {alpha};
    platform.userDefaults.values["cbaal"] = std::string("org.a");
    service.emplace(lockWindows.factory(), settings);
    forgetWhatHappened();

    service->start();

    EXPECT_THAT(platform.log.lines, ElementsAre("Will not start. No password"));
    EXPECT_THAT(
        platform.calls, ElementsAre("keychain copyMatching com.quorvent.Tarvel (Password)")
    );
    EXPECT_TRUE(platform.timers.timers.empty());
    EXPECT_FALSE(lockWindows.isLocked());
}

TEST_F(CentralService, TheFirstPasswordStartsMonitoringAndTheHelperAtOnce)
{
    platform.keychainItems.items.erase(fakes::accountOf("Password"));
    begin();

    touchSettings();
    EXPECT_THAT(platform.log.lines, ElementsAre("Will not start. No password"));
    forgetWhatHappened();
    settings.setApplicationPassword("first");

    EXPECT_THAT(platform.log.lines, ElementsAre("Monitoring services started"));
    EXPECT_THAT(platform.calls, Contains(HELPER_LAUNCH));
    platform.workspace.startLaunching(alpha);
    EXPECT_TRUE(lockWindows.isLocked());
    lockWindows.type("first");
    EXPECT_FALSE(lockWindows.isLocked());
}

TEST_F(CentralService, LaterChangesDoNotStartItAgain)
{
    begin();

    touchSettings();
    settings.setApplicationPassword("another");
    settings.setApplicationPassword("");
    settings.setApplicationPassword("yet another");

    EXPECT_EQ(platform.timers.timers.size(), 1U);
    EXPECT_THAT(platform.log.lines, IsEmpty());
    EXPECT_THAT(platform.calls, Not(Contains(HELPER_LAUNCH)));
}

TEST_F(CentralService, ABlockedApplicationThatStillRunsIsLockedAgainBeforeMonitoringStarts)
{
    platform.userDefaults.values["cbaal"] = std::string("org.a");
    platform.workspace.running = {alpha};
    service.emplace(lockWindows.factory(), settings);
    forgetWhatHappened();

    service->start();

    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "keychain copyMatching com.quorvent.Tarvel (Password)",
            "lock 1 create",
            "userDefaults setValue cbaal org.a",
            "userDefaults synchronize",
            "lock 1 showServiceWindow Alpha is locked",
            "workspace addKeyPathObserver runningApplications 3",
            "workspace addObserver willLaunch",
            "workspace addObserver didLaunch",
            "workspace addObserver didTerminate",
            HELPER_LAUNCH
        )
    );
    EXPECT_TRUE(lockWindows.isLocked());
    EXPECT_EQ(lockWindows.latest->icon, alpha.icon);
}

TEST_F(CentralService, ABlockedApplicationThatNoLongerRunsIsNotLockedAndItsMarkStays)
{
    platform.userDefaults.values["cbaal"] = std::string("org.a");

    begin();

    EXPECT_EQ(lockWindows.count, 0);
    EXPECT_EQ(mark(), "org.a");
}

TEST_F(CentralService, WhatAnAgentLeftBlockedItsSuccessorLocksAgain)
{
    begin();
    lockAlpha();
    service.reset();

    storage::ConfigurationAndPreferencesService settingsOfSuccessor;
    locking::ApplicationsLockerCentralService successor(lockWindows.factory(), settingsOfSuccessor);
    successor.start();

    EXPECT_EQ(lockWindows.count, 2);
    EXPECT_TRUE(lockWindows.isLocked());
    lockWindows.type("secret");
    EXPECT_FALSE(lockWindows.isLocked());
    EXPECT_EQ(mark(), std::nullopt);
}

TEST_F(CentralService, NothingIsLeftBehindByAServiceThatIsGone)
{
    begin();
    service.reset();
    forgetWhatHappened();

    platform.workspace.startLaunching(alpha);
    connectScreens(2);
    platform.screens.arrange({{fakes::FakeScreens::screen(1), fakes::FakeScreens::screen(0)}});
    platform.timers.fireAll();
    touchSettings();

    EXPECT_THAT(platform.log.lines, testing::IsEmpty());
    EXPECT_EQ(lockWindows.count, 0);
    EXPECT_EQ(platform.windows.visibleCount(), 0);
}

TEST_F(CentralService, TheHelperIsStartedAgainWhenItEnds)
{
    begin();
    platform::RunningApplication helper =
        fakes::runningAccessory(300, "com.quorvent.OlvoHelper", "OlvoHelper");
    helper.activationPolicy = platform::ActivationPolicy::Prohibited;

    platform.workspace.change({std::nullopt, std::vector{helper}});

    EXPECT_THAT(platform.calls, ElementsAre(HELPER_LAUNCH));
    EXPECT_THAT(platform.log.lines, ElementsAre("Helper Terminated", "Terminated: OlvoHelper"));
}
