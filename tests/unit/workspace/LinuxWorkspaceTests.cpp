// What the desktop answers: who runs, what is installed, and what is brought forward or launched.
#include "WorkspaceTest.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using platform::WorkspaceNotificationName;
using testing::ElementsAre;
using testing::IsEmpty;
using workspace::known;
using LinuxWorkspace = workspace::WorkspaceTest;

} // namespace

TEST_F(LinuxWorkspace, RoleFindsWhoeverPlaysIt)
{
    start();
    exec(10, "xterm");

    EXPECT_EQ(desktop.runningApplications("com.apple.Terminal").size(), 1U);
    EXPECT_TRUE(desktop.answersTo("xterm", "com.apple.Terminal"));
    EXPECT_TRUE(desktop.answersTo("xterm", "xterm"));
    EXPECT_FALSE(desktop.answersTo("mousepad", "com.apple.Terminal"));
    EXPECT_FALSE(desktop.answersTo("com.apple.Terminal", "xterm"));
}

TEST_F(LinuxWorkspace, PolicyIsThatOfWhatAUserSees)
{
    start();
    exec(10, "mousepad");
    exec(20, "agentless");
    exec(30, "xterm");
    const auto policyOf = [this](pid_t pid) {
        return desktop.runningApplication(pid)->activationPolicy;
    };

    EXPECT_EQ(policyOf(10), platform::ActivationPolicy::Regular);
    EXPECT_EQ(policyOf(20), platform::ActivationPolicy::Accessory);
    processes.exec(
        {.pid = 40,
         .parent = 1,
         .startTime = 400,
         .executable = "/opt/Tarvel.app/Contents/Library/LoginItems/OlvoHelper.app/OlvoHelper",
         .arguments = {"OlvoHelper"}}
    );
    queues.runAll();
    EXPECT_EQ(policyOf(40), platform::ActivationPolicy::Prohibited);
}

TEST_F(LinuxWorkspace, HiddenEntryIsAccessoryUntilItShowsAWindow)
{
    start();
    exec(10, "agentless");
    EXPECT_EQ(
        desktop.runningApplication(10)->activationPolicy, platform::ActivationPolicy::Accessory
    );

    windows.show({10, "Agentless", "agentless"});
    EXPECT_EQ(
        desktop.runningApplication(10)->activationPolicy, platform::ActivationPolicy::Regular
    );
}

TEST_F(LinuxWorkspace, LaunchIsLookedUpAsTheApplicationItIsAbout)
{
    startOffice();
    windows.show({10, "writer", "soffice", "", 1});
    windows.show({10, "calc", "soffice", "", 2});
    std::string found;
    desktop.addObserver(
        &found,
        WorkspaceNotificationName::WillLaunchApplication,
        [&](const platform::WorkspaceNotification&) {
            found = *desktop.runningApplication(10)->bundleIdentifier;
        }
    );
    windows.onLaunchHint("writer");

    EXPECT_EQ(found, "writer");
    EXPECT_EQ(desktop.runningApplication(10)->bundleIdentifier, "calc");
}

TEST_F(LinuxWorkspace, ProcessIsKnownByItsIdentifierWhileItsLaunchIsAnnounced)
{
    start();
    std::optional<platform::RunningApplication> found;
    desktop.addObserver(
        &found,
        WorkspaceNotificationName::WillLaunchApplication,
        [&](const platform::WorkspaceNotification& notification) {
            const auto& pid =
                notification.userInfo->at(platform::APPLICATION_PROCESS_IDENTIFIER_KEY);
            found = desktop.runningApplication(static_cast<int>(std::get<std::int64_t>(pid)));
        }
    );
    exec(10, "mousepad");

    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->localizedName, "Name of mousepad");
    EXPECT_EQ(found->executableUrl, "/usr/bin/mousepad");
    EXPECT_EQ(found->bundleUrl, "/Applications/mousepad.app");
    EXPECT_EQ(found->activationPolicy, platform::ActivationPolicy::Regular);
    EXPECT_NE(found->icon, nullptr);
}

TEST_F(LinuxWorkspace, BringingForwardTriesEveryProcessOfTheInstance)
{
    start();
    exec(10, "mousepad");
    processes.ancestors[11] = {10, 1};
    exec(11, "mousepad");
    windows.windows.push_back({11, "mousepad", "mousepad"});

    EXPECT_TRUE(desktop.activate(*desktop.runningApplication(10), 2));
    EXPECT_THAT(windows.forward, ElementsAre(11));
    exec(20, "xterm");
    EXPECT_FALSE(desktop.activate(*desktop.runningApplication(20), 2));
}

TEST_F(LinuxWorkspace, WindowOfTheApplicationComesForwardWhereOneProcessIsSeveral)
{
    startOffice();
    windows.show({10, "writer", "writer", "", 1});
    windows.show({10, "calc", "calc", "", 2});
    ASSERT_EQ(desktop.runningApplications("calc").size(), 1U);

    EXPECT_TRUE(desktop.activate(desktop.runningApplications("calc").front(), 2));
    EXPECT_TRUE(desktop.activate(desktop.runningApplications("writer").front(), 2));
    EXPECT_THAT(windows.forwardWindows, ElementsAre(2, 1));
}

TEST_F(LinuxWorkspace, InstalledApplicationsAreFoundByIdentifier)
{
    start();

    EXPECT_EQ(desktop.absolutePathForAppBundle("mousepad"), "/Applications/mousepad.app");
    EXPECT_EQ(desktop.absolutePathForAppBundle("nobody"), std::nullopt);
    const auto icon = desktop.iconForFile("/Applications/mousepad.app");
    EXPECT_EQ(dynamic_cast<const fakes::FakeIcon&>(*icon).source, "icon-mousepad");
    EXPECT_NE(desktop.iconForFile("/nowhere"), nullptr);
}

TEST_F(LinuxWorkspace, UrlsAreLeftToTheDesktop)
{
    EXPECT_TRUE(desktop.openUrl("mailto:somebody@quorvent.example"));
    EXPECT_THAT(opened, ElementsAre("mailto:somebody@quorvent.example"));
}

TEST_F(LinuxWorkspace, ProgramThatRunsAlreadyIsNotStartedAgain)
{
    constexpr auto HELPER_BUNDLE = "/opt/Tarvel.app/Contents/Library/LoginItems/OlvoHelper.app";
    proc::ProcessFacts helper;
    helper.pid = 30;
    helper.startTime = 300;
    helper.executable = std::string(HELPER_BUNDLE) + "/OlvoHelper";
    processes.all.push_back(helper);
    start();

    EXPECT_TRUE(desktop.launchApplication(HELPER_BUNDLE, platform::LAUNCH_DEFAULT, {}));
    EXPECT_THAT(reports, IsEmpty());
    EXPECT_FALSE(desktop.launchApplication("/opt/Missing.app", platform::LAUNCH_DEFAULT, {}));
    EXPECT_EQ(reports.size(), 1U) << "what cannot be started is said";
}

TEST_F(LinuxWorkspace, ProgramThatIsStartedTooOftenIsTriedAgainOnceWhoeverAsks)
{
    start();
    constexpr auto MISSING = "/opt/Missing.app";
    const auto before = timers.timers.size();
    for (std::size_t ask = 0; ask < workspace::BundleLauncher::STARTS_A_MINUTE + 5; ++ask) {
        desktop.launchApplication(MISSING, platform::LAUNCH_DEFAULT, {});
    }
    EXPECT_EQ(timers.timers.size(), before + 1);

    timers.fireAll();
    EXPECT_EQ(timers.timers.size(), before + 2) << "it is still too often, and tried once more";
}
