#include "applications/ApplicationsMonitorService.h"
#include "fakes/Applications.h"
#include "fakes/FakePlatform.h"

#include <cstdint>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using applications::ApplicationEntityPtr;
using platform::WorkspaceNotificationName;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto PROCESS_IDENTIFIER = platform::APPLICATION_PROCESS_IDENTIFIER_KEY;

class ApplicationsMonitorServiceTest : public testing::Test
{
protected:
    fakes::FakePlatform platform;
    applications::ApplicationsMonitorService service;
    std::vector<std::string> events;
    std::vector<ApplicationEntityPtr> started;
    platform::RunningApplication regular = fakes::runningApplication(100, "org.a", "Alpha");
    platform::RunningApplication accessory = fakes::runningAccessory(200, "org.b", "Beta");
    platform::RunningApplication helper =
        fakes::runningAccessory(300, "com.quorvent.OlvoHelper", "OlvoHelper");

    void SetUp() override
    {
        helper.activationPolicy = platform::ActivationPolicy::Prohibited;
        service.onApplicationWillStart = [this](const ApplicationEntityPtr& application) {
            events.push_back("will start " + application->name);
            started.push_back(application);
        };
        service.onApplicationDidStart = [this](const ApplicationEntityPtr& application) {
            events.push_back("did start " + application->name);
            started.push_back(application);
        };
        service.onApplicationTerminated = [this](const ApplicationEntityPtr& application) {
            events.push_back("terminated " + application->name);
        };
        service.onHelperTerminated = [this] { events.emplace_back("helper terminated"); };
    }

    void dropCallbacks()
    {
        service.onApplicationWillStart = nullptr;
        service.onApplicationDidStart = nullptr;
        service.onApplicationTerminated = nullptr;
        service.onHelperTerminated = nullptr;
    }

    void launch(const std::optional<platform::UserInfo>& userInfo) const
    {
        service.applicationWillStart({WorkspaceNotificationName::WillLaunchApplication, userInfo});
        service.applicationDidStart({WorkspaceNotificationName::DidLaunchApplication, userInfo});
    }

    void insert(const std::vector<platform::RunningApplication>& applications)
    {
        platform.workspace.change({applications, std::nullopt});
    }

    void remove(const std::vector<platform::RunningApplication>& applications)
    {
        platform.workspace.change({std::nullopt, applications});
    }
};

} // namespace

TEST_F(ApplicationsMonitorServiceTest, RegistersNothingBeforeItIsStarted)
{
    platform.workspace.startLaunching(regular);
    platform.workspace.startLaunching(accessory);

    EXPECT_THAT(events, IsEmpty());
    EXPECT_THAT(platform.calls, IsEmpty());
}

TEST_F(ApplicationsMonitorServiceTest, StartRegistersTheListThenTheThreeNotifications)
{
    service.startService();

    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "workspace addKeyPathObserver runningApplications 3",
            "workspace addObserver willLaunch",
            "workspace addObserver didLaunch",
            "workspace addObserver didTerminate"
        )
    );
}

TEST_F(ApplicationsMonitorServiceTest, StopTakesAllObserversBackInOrder)
{
    service.startService();
    platform.calls.clear();

    service.stopService();

    EXPECT_THAT(
        platform.calls,
        ElementsAre(
            "workspace removeKeyPathObserver runningApplications",
            "workspace removeObserver willLaunch",
            "workspace removeObserver didLaunch",
            "workspace removeObserver didTerminate",
            "workspace removeObserver"
        )
    );
    platform.workspace.startLaunching(regular);
    platform.workspace.startLaunching(accessory);
    platform.workspace.terminate(accessory);
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(ApplicationsMonitorServiceTest, StartedTwiceEveryEventIsReportedTwice)
{
    service.startService();
    service.startService();

    platform.workspace.startLaunching(regular);

    EXPECT_THAT(events, ElementsAre("will start Alpha", "will start Alpha"));
}

TEST_F(ApplicationsMonitorServiceTest, ARegularApplicationIsReportedByTheNotificationsAlone)
{
    service.startService();

    platform.workspace.startLaunching(regular);
    EXPECT_THAT(events, ElementsAre("will start Alpha"));
    platform.workspace.finishLaunching(regular);
    EXPECT_THAT(events, ElementsAre("will start Alpha", "did start Alpha"));
    platform.workspace.terminate(regular);
    EXPECT_THAT(events, ElementsAre("will start Alpha", "did start Alpha", "terminated Alpha"));
}

TEST_F(ApplicationsMonitorServiceTest, ARegularApplicationInAChangeProducesNothing)
{
    service.startService();

    insert({regular});
    remove({regular});

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(ApplicationsMonitorServiceTest, AnAccessoryIsReportedByTheChangeBackToBack)
{
    service.startService();

    insert({accessory});
    EXPECT_THAT(events, ElementsAre("will start Beta", "did start Beta"));
    remove({accessory});
    EXPECT_THAT(events, ElementsAre("will start Beta", "did start Beta", "terminated Beta"));
}

TEST_F(ApplicationsMonitorServiceTest, BothStartCallbacksGetTheSameRecord)
{
    service.startService();

    insert({accessory});

    ASSERT_EQ(started.size(), 2U);
    EXPECT_EQ(started[0], started[1]);
    EXPECT_EQ(started[0]->bundleIdentifier, "org.b");
    EXPECT_EQ(started[0]->icon, accessory.icon);
}

TEST_F(ApplicationsMonitorServiceTest, OfTwoInsertedAccessoriesOnlyTheFirstIsReported)
{
    service.startService();

    insert({accessory, fakes::runningAccessory(201, "org.c", "Gamma")});

    EXPECT_THAT(events, ElementsAre("will start Beta", "did start Beta"));
}

TEST_F(ApplicationsMonitorServiceTest, AnAccessoryBehindARegularApplicationIsNotReported)
{
    service.startService();

    insert({regular, accessory});
    remove({regular, accessory});

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(ApplicationsMonitorServiceTest, AChangeWithBothKeysReportsTheStartThenTheEnd)
{
    service.startService();
    const platform::RunningApplication ended = fakes::runningAccessory(201, "org.c", "Gamma");

    platform.workspace.change({std::vector{accessory}, std::vector{ended}});

    EXPECT_THAT(events, ElementsAre("will start Beta", "did start Beta", "terminated Gamma"));
}

TEST_F(ApplicationsMonitorServiceTest, EmptyListsAndMissingChangesProduceNothing)
{
    const std::vector<platform::RunningApplication> none;

    service.observeValue("runningApplications", platform::KeyValueChange{none, none});
    service.observeValue("runningApplications", platform::KeyValueChange{});
    service.observeValue("runningApplications", std::nullopt);

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(ApplicationsMonitorServiceTest, AnotherKeyPathProducesNothing)
{
    service.observeValue(
        "menuBarOwningApplication",
        platform::KeyValueChange{std::vector{accessory}, std::vector{accessory}}
    );

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(ApplicationsMonitorServiceTest, AProcessThatIsNotKnownYetProducesNoWillStart)
{
    service.startService();

    launch(platform::UserInfo{{PROCESS_IDENTIFIER, std::int64_t{4711}}});

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(ApplicationsMonitorServiceTest, ALaunchWithoutAnIntegerIdentifierProducesNothing)
{
    platform.workspace.running = {regular};

    launch(std::nullopt);
    launch(platform::UserInfo{});
    launch(platform::UserInfo{{PROCESS_IDENTIFIER, std::string("100")}});
    launch(platform::UserInfo{{platform::WORKSPACE_APPLICATION_KEY, regular}});

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(ApplicationsMonitorServiceTest, ALaunchIsLookedUpByItsProcessIdentifier)
{
    platform.workspace.running = {regular};

    launch(platform::UserInfo{{PROCESS_IDENTIFIER, std::int64_t{100}}});

    EXPECT_THAT(events, ElementsAre("will start Alpha", "did start Alpha"));
}

TEST_F(ApplicationsMonitorServiceTest, AProcessIdentifierOutOfRangeStopsTheProcess)
{
    const std::int64_t tooLarge = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;

    EXPECT_DEATH(launch(platform::UserInfo{{PROCESS_IDENTIFIER, tooLarge}}), "out of range");
    EXPECT_DEATH(launch(platform::UserInfo{{PROCESS_IDENTIFIER, -tooLarge - 1}}), "out of range");
}

TEST_F(ApplicationsMonitorServiceTest, ATerminationWithoutAnApplicationProducesNothing)
{
    constexpr auto NAME = WorkspaceNotificationName::DidTerminateApplication;

    service.applicationTerminated({NAME, std::nullopt});
    service.applicationTerminated({NAME, platform::UserInfo{}});
    service.applicationTerminated(
        {NAME, platform::UserInfo{{platform::WORKSPACE_APPLICATION_KEY, std::string("Alpha")}}}
    );

    EXPECT_THAT(events, IsEmpty());
}

TEST_F(ApplicationsMonitorServiceTest, TheEndOfTheHelperIsReportedThroughBothCallbacks)
{
    service.startService();

    remove({helper});

    EXPECT_THAT(events, ElementsAre("helper terminated", "terminated OlvoHelper"));
}

TEST_F(ApplicationsMonitorServiceTest, WithoutAHelperCallbackOnlyTheOtherOneRuns)
{
    service.onHelperTerminated = nullptr;
    service.startService();

    remove({helper});

    EXPECT_THAT(events, ElementsAre("terminated OlvoHelper"));
}

TEST_F(ApplicationsMonitorServiceTest, TheNotificationOfTheHelpersEndIsAnOrdinaryOne)
{
    service.startService();

    platform.workspace.notifyApplication(
        WorkspaceNotificationName::DidTerminateApplication, helper
    );

    EXPECT_THAT(events, ElementsAre("terminated OlvoHelper"));
}

TEST_F(ApplicationsMonitorServiceTest, WithNoCallbacksEveryEventIsConsumedSilently)
{
    dropCallbacks();
    service.startService();

    platform.workspace.startLaunching(regular);
    platform.workspace.finishLaunching(regular);
    platform.workspace.terminate(regular);
    platform.workspace.startLaunching(accessory);
    platform.workspace.terminate(accessory);
    platform.workspace.terminate(helper);

    EXPECT_THAT(events, IsEmpty());
    EXPECT_THAT(platform.log.lines, IsEmpty());
    EXPECT_THAT(platform.log.diagnostics, IsEmpty());
}

TEST_F(ApplicationsMonitorServiceTest, ACallbackMayTakeItselfAway)
{
    service.startService();
    service.onApplicationWillStart = [this](const ApplicationEntityPtr& application) {
        service.onApplicationWillStart = nullptr;
        events.push_back("once " + application->name);
    };

    insert({accessory});
    insert({accessory});

    EXPECT_THAT(events, ElementsAre("once Beta", "did start Beta", "did start Beta"));
}
