#include "Facts.h"
#include "FakeApplicationIndex.h"
#include "FakeProcessSource.h"
#include "FakeWindowSystem.h"
#include "fakes/FakeDispatchQueues.h"
#include "fakes/FakeIcon.h"
#include "fakes/FakeTimers.h"
#include "linux/workspace/LinuxWorkspace.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using platform::WorkspaceNotificationName;
using testing::ElementsAre;
using testing::IsEmpty;
using workspace::known;
using workspace::process;

const platform::Bundle MAIN_BUNDLE{
    "/opt/Tarvel.app",
    std::string("Tarvel"),
    std::string("Tarvel"),
    std::string("com.quorvent.Tarvel")};

class LinuxWorkspace : public testing::Test
{
protected:
    LinuxWorkspace()
    {
        index.add(known("mousepad"));
        index.add(known("xterm"));
        index.add(known("agentless", false));
        index.roles["xterm"] = "com.apple.Terminal";
    }

    void start()
    {
        desktop.start([this] { ready = true; });
        queues.runAll();
        observe(WorkspaceNotificationName::WillLaunchApplication, "will launch");
        observe(WorkspaceNotificationName::DidLaunchApplication, "did launch");
        observe(WorkspaceNotificationName::DidTerminateApplication, "did terminate");
        observe(WorkspaceNotificationName::DidActivateApplication, "did activate");
        observe(WorkspaceNotificationName::DidDeactivateApplication, "did deactivate");
        desktop.addKeyPathObserver(
            this,
            platform::RUNNING_APPLICATIONS_KEY_PATH,
            3,
            [this](const auto&, const std::optional<platform::KeyValueChange>& change) {
                const bool inserted = change->newKey.has_value();
                const auto& list = inserted ? *change->newKey : *change->oldKey;
                heard.push_back(
                    (inserted ? "inserted " : "removed ") + *list.front().bundleIdentifier
                );
            }
        );
    }

    void observe(WorkspaceNotificationName name, const std::string& text)
    {
        desktop.addObserver(this, name, [this, text](const auto& notification) {
            const auto& value = notification.userInfo->at(platform::WORKSPACE_APPLICATION_KEY);
            const auto& application = std::get<platform::RunningApplication>(value);
            heard.push_back(text + " " + *application.bundleIdentifier);
        });
    }

    void exec(pid_t pid, const std::string& name)
    {
        processes.exec(process(pid, name));
        queues.runAll();
    }

    void exit(pid_t pid)
    {
        processes.exit(pid);
        queues.runAll();
    }

    workspace::FakeApplicationIndex index;
    workspace::FakeProcessSource processes;
    workspace::FakeWindowSystem windows;
    fakes::FakeDispatchQueues queues;
    fakes::FakeTimers timers;
    std::vector<std::string> reports;
    std::vector<std::string> opened;
    workspace::OwnPrograms programs{MAIN_BUNDLE, index};
    workspace::LinuxWorkspace desktop{workspace::LinuxWorkspace::Parts{
        .processes = processes,
        .applications = programs,
        .windows = &windows,
        .queues = queues,
        .timers = timers,
        .loadIcon = [](const std::string& name) { return std::make_shared<fakes::FakeIcon>(name); },
        .openUrl =
            [this](const std::string& url) {
                opened.push_back(url);
                return true;
            },
        .report = [this](std::string_view line) { reports.emplace_back(line); },
        .session = {":1", ""},
    }};
    std::vector<std::string> heard;
    bool ready = false;
};

} // namespace

TEST_F(LinuxWorkspace, WhatRanBeforeIsInTheListWithoutAnyNotification)
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

TEST_F(LinuxWorkspace, AnotherWindowOfWhatRanBeforeIsNoLaunch)
{
    processes.all.push_back(process(10, "mousepad"));
    windows.windows.push_back({10, "mousepad", "mousepad", "", 1});
    start();
    windows.show({10, "mousepad", "mousepad", "", 2});

    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(LinuxWorkspace, FirstWindowOfWhatRanHiddenBeforeIsALaunch)
{
    processes.all.push_back(process(10, "mousepad"));
    start();
    windows.show({10, "mousepad", "mousepad"});

    EXPECT_THAT(heard, ElementsAre("will launch mousepad", "did launch mousepad"));
}

TEST_F(LinuxWorkspace, HintOfWhatRunsIsALaunch)
{
    start();
    exec(10, "mousepad");
    windows.show({10, "mousepad", "mousepad"});
    heard.clear();
    windows.onLaunchHint("mousepad");
    exec(20, "mousepad");

    EXPECT_THAT(heard, ElementsAre("will launch mousepad", "inserted mousepad"));
}

TEST_F(LinuxWorkspace, ProcessOfAnotherSessionIsLeftOut)
{
    processes.environments[10].display = ":2";
    processes.environments[20].display = ":1";
    start();
    exec(10, "mousepad");
    exec(20, "xterm");
    exec(30, "mousepad");

    EXPECT_THAT(
        heard,
        ElementsAre(
            "inserted xterm", "will launch xterm", "inserted mousepad", "will launch mousepad"
        )
    );
}

TEST_F(LinuxWorkspace, ProcessBelowOneOfAnotherSessionIsLeftOut)
{
    processes.environments[5].display = ":2";
    processes.ancestors[10] = {6, 5};
    processes.ancestors[20] = {6};
    start();
    exec(10, "mousepad");
    exec(20, "xterm");

    EXPECT_THAT(heard, ElementsAre("inserted xterm", "will launch xterm"));
}

TEST_F(LinuxWorkspace, WindowCountsWhateverSessionItsProcessNamed)
{
    processes.environments[10].display = ":2";
    start();
    exec(10, "mousepad");
    windows.show({10, "mousepad", "mousepad"});

    EXPECT_THAT(
        heard, ElementsAre("inserted mousepad", "will launch mousepad", "did launch mousepad")
    );
}

TEST_F(LinuxWorkspace, WindowNeverOverridesWhatAProcessExecutes)
{
    start();
    exec(10, "xterm");
    heard.clear();
    windows.show({10, "mousepad", "mousepad"});

    EXPECT_THAT(heard, ElementsAre("did launch xterm"));
}

TEST_F(LinuxWorkspace, WindowTellsTheApplicationWhereOneProgramIsSeveral)
{
    index.add(known("calc"));
    index.add(known("writer"));
    index.shared = {"calc", "writer"};
    start();
    exec(10, "writer");
    windows.show({10, "writer", "soffice", "", 1});
    heard.clear();
    windows.show({10, "soffice", "soffice", "", 2});
    EXPECT_THAT(heard, IsEmpty());
    windows.show({10, "calc", "soffice", "", 2});
    EXPECT_THAT(heard, ElementsAre("inserted calc", "will launch calc", "did launch calc"));
    windows.hide(2);
    EXPECT_EQ(heard.back(), "did terminate calc");
}

TEST_F(LinuxWorkspace, LaunchIsLookedUpAsTheApplicationItIsAbout)
{
    index.add(known("calc"));
    index.add(known("writer"));
    index.shared = {"calc", "writer"};
    start();
    exec(10, "writer");
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

TEST_F(LinuxWorkspace, WhatAWindowRevealedIsLearned)
{
    start();
    processes.all.push_back(process(10, "copy-of-mousepad"));
    windows.show({10, "mousepad", "mousepad"});

    EXPECT_THAT(index.learned, ElementsAre("/usr/bin/copy-of-mousepad is mousepad"));
}

namespace {

/// An application that is a script of the given shell.
class Script : public LinuxWorkspace, public testing::WithParamInterface<std::string>
{
};

} // namespace

TEST_P(Script, EndsWithTheProgramThatItLeftBehind)
{
    auto script = std::make_shared<workspace::KnownApplication>(*known("script"));
    script->executable = "/usr/bin/" + GetParam();
    index.add(script);
    start();
    exec(10, GetParam());
    proc::ProcessFacts child = process(11, "real-program");
    child.parent = 10;
    processes.exec(child);
    queues.runAll();
    exit(10);
    EXPECT_EQ(heard.back(), "will launch script");
    exit(11);
    EXPECT_EQ(heard.back(), "did terminate script");
}

INSTANTIATE_TEST_SUITE_P(
    Shells,
    Script,
    testing::Values("sh", "bash", "dash", "zsh", "ksh", "mksh", "busybox"),
    [](const auto& shell) { return shell.param; }
);

TEST_F(LinuxWorkspace, RegularStartIsListedThenAnnouncedThenLaunchedThenTerminated)
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

TEST_F(LinuxWorkspace, ProcessOfNobodyIsNeverHeardOf)
{
    start();
    processes.exec(process(10, "nobody"));

    EXPECT_TRUE(queues.main.empty()) << "the main thread must not be woken for it";
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

TEST_F(LinuxWorkspace, AccessoryIsOnlySeenToComeAndGoInTheList)
{
    start();
    exec(10, "agentless");
    exit(10);

    EXPECT_THAT(heard, ElementsAre("inserted agentless", "removed agentless"));
}

TEST_F(LinuxWorkspace, HandOverToALivingInstanceIsNoTermination)
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

TEST_F(LinuxWorkspace, WindowThatNoExecAnnouncedStillLaunchesItsApplication)
{
    start();
    processes.all.push_back(process(10, "copy-of-mousepad"));
    windows.show({10, "mousepad", "mousepad"});
    queues.runAll();

    EXPECT_THAT(
        heard, ElementsAre("inserted mousepad", "will launch mousepad", "did launch mousepad")
    );
}

TEST_F(LinuxWorkspace, WindowOfAChildBelongsToItsApplication)
{
    start();
    exec(10, "xterm");
    processes.all.push_back(process(12, "nobody"));
    processes.ancestors[12] = {11, 10, 1};
    windows.show({12, "Something", "something"});

    EXPECT_EQ(heard.back(), "did launch xterm");
}

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

TEST_F(LinuxWorkspace, ActivationIsReportedByApplicationOldOneFirst)
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
    index.add(known("calc"));
    index.add(known("writer"));
    index.shared = {"calc", "writer"};
    start();
    exec(10, "writer");
    windows.show({10, "writer", "writer", "", 1});
    windows.show({10, "calc", "calc", "", 2});
    ASSERT_EQ(desktop.runningApplications("calc").size(), 1U);

    EXPECT_TRUE(desktop.activate(desktop.runningApplications("calc").front(), 2));
    EXPECT_TRUE(desktop.activate(desktop.runningApplications("writer").front(), 2));
    EXPECT_THAT(windows.forwardWindows, ElementsAre(2, 1));
}

TEST_F(LinuxWorkspace, ActivationIsOfTheApplicationWhoseWindowIsInFront)
{
    index.add(known("calc"));
    index.add(known("writer"));
    index.shared = {"calc", "writer"};
    start();
    exec(10, "writer");
    windows.show({10, "writer", "writer", "", 1});
    windows.show({10, "calc", "calc", "", 2});
    heard.clear();
    windows.onActiveChanged(10, 2);
    windows.onActiveChanged(10, 1);

    EXPECT_THAT(
        heard, ElementsAre("did activate calc", "did deactivate calc", "did activate writer")
    );
}

TEST_F(LinuxWorkspace, WindowOfACopyIsTheApplications)
{
    index.copies["/usr/bin/innocent"] = "mousepad";
    start();
    exec(10, "xterm");
    processes.all.push_back(process(11, "innocent"));
    processes.ancestors[11] = {10, 1};
    windows.show({10, "xterm", "xterm", "", 5});
    heard.clear();
    windows.show({11, "Innocent", "innocent", "", 1});

    EXPECT_THAT(
        heard, ElementsAre("inserted mousepad", "will launch mousepad", "did launch mousepad")
    );
    EXPECT_THAT(index.learned, ElementsAre("/usr/bin/innocent is mousepad"));
}

TEST_F(LinuxWorkspace, CopyThatAnApplicationWasStartedForIsThatApplication)
{
    index.copies["/usr/bin/boxed"] = "mousepad";
    start();
    exec(10, "xterm");
    processes.all.push_back(process(11, "boxed"));
    processes.ancestors[11] = {10, 1};
    heard.clear();
    windows.show({11, "Boxed", "boxed", "", 1});

    EXPECT_THAT(heard, ElementsAre("did launch xterm"));
}

TEST_F(LinuxWorkspace, WindowWithoutAProcessIsItsApplicationUntilItGoes)
{
    start();
    windows.show({0, "mousepad", "mousepad", "", 1});
    windows.show({0, "mousepad", "mousepad", "", 2});
    windows.show({0, "Nobody", "nobody", "", 3});
    EXPECT_THAT(
        heard, ElementsAre("inserted mousepad", "will launch mousepad", "did launch mousepad")
    );
    const auto running = desktop.runningApplications("mousepad");
    ASSERT_EQ(running.size(), 1U);
    EXPECT_TRUE(desktop.activate(running.front(), 2));
    EXPECT_THAT(windows.forwardWindows, ElementsAre(1));
    heard.clear();
    windows.hide(1);
    EXPECT_THAT(heard, IsEmpty());
    windows.hide(2);

    EXPECT_THAT(heard, ElementsAre("removed mousepad", "did terminate mousepad"));
}

TEST_F(LinuxWorkspace, WindowWithoutAProcessIsNoPartOfAnotherApplication)
{
    start();
    windows.show({0, "mousepad", "mousepad", "", 1});
    windows.show({0, "xterm", "xterm", "", 2});
    exec(10, "mousepad");

    EXPECT_EQ(desktop.runningApplications("mousepad").size(), 2U);
    EXPECT_EQ(desktop.runningApplications("xterm").size(), 1U);
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

TEST_F(LinuxWorkspace, LostEventsAreMadeUpForByTheNextSnapshot)
{
    start();
    exec(10, "mousepad");
    heard.clear();
    processes.all = {process(20, "xterm")};
    processes.onSnapshot(processes.all);
    queues.runAll();

    EXPECT_THAT(
        heard,
        ElementsAre(
            "removed mousepad", "did terminate mousepad", "inserted xterm", "will launch xterm"
        )
    );
}

TEST_F(LinuxWorkspace, ForkedProcessKeepsTheInstance)
{
    start();
    exec(10, "mousepad");
    heard.clear();
    processes.all.push_back(process(11, "mousepad"));
    exit(10);

    EXPECT_THAT(heard, IsEmpty());
    EXPECT_EQ(desktop.runningApplications("mousepad").front().processIdentifier, 11);
}

TEST_F(LinuxWorkspace, ForkOfTheLivingInstanceIsNoSurvivorOfASecondStart)
{
    start();
    exec(10, "xterm");
    exec(20, "xterm");
    heard.clear();
    processes.all.push_back(process(21, "xterm")); // about to execute a shell
    processes.ancestors[21] = {10, 1};
    exit(20);
    exit(21);

    EXPECT_THAT(heard, IsEmpty());
    EXPECT_EQ(desktop.runningApplications("xterm").size(), 1U);
}

TEST_F(LinuxWorkspace, InterpreterThatRunsSomethingElseIsNoSurvivor)
{
    auto script = std::make_shared<workspace::KnownApplication>(*known("script"));
    script->executable = "/usr/bin/python3";
    index.add(script);
    start();
    exec(10, "python3");
    proc::ProcessFacts other = process(11, "python3");
    other.arguments = {"python3", "/home/user/other.py"};
    index.hide("script");
    processes.all.push_back(other);
    exit(10);

    EXPECT_EQ(heard.back(), "did terminate script");
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
