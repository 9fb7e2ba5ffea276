// One set of promises for the workspace, kept by the fake and, with real processes, by the adapter.
#include "desktop/ChildProcess.h"
#include "desktop/MainLoop.h"
#include "desktop/TemporaryFolder.h"
#include "fakes/FakeTimers.h"
#include "fakes/FakeWorkspace.h"
#include "linux/workspace/KernelProcessSource.h"
#include "linux/workspace/LinuxWorkspace.h"
#include "linux/workspace/OwnPrograms.h"
#include "linux/xdg/ApplicationCatalogue.h"
#include "linux/xdg/XdgApplicationIndex.h"

#include <map>
#include <memory>

#include <gtest/gtest.h>

namespace {

using platform::RunningApplication;
using platform::WorkspaceNotificationName;

constexpr auto HELPER = "com.quorvent.OlvoHelper";
constexpr auto HELPER_BUNDLE = "Tarvel.app/Contents/Library/LoginItems/OlvoHelper.app";

/// A desktop with the application "org.Foo", named "Foo", that is meant to be shown.
class FakeSystem
{
public:
    FakeSystem() { fake.installed["org.Foo"] = "/Applications/org.Foo.app"; }

    platform::Workspace& workspace() { return fake; }

    pid_t startFoo()
    {
        RunningApplication application;
        application.processIdentifier = ++latest;
        application.bundleIdentifier = "org.Foo";
        application.localizedName = "Foo";
        application.activationPolicy = platform::ActivationPolicy::Regular;
        applications[latest] = application;
        fake.startLaunching(application);
        return latest;
    }

    void end(pid_t pid) { fake.terminate(applications.at(pid)); }

    bool waitUntil(const std::function<bool()>& done) { return done(); }

private:
    fakes::Calls calls;
    fakes::FakeWorkspace fake{calls};
    std::map<pid_t, RunningApplication> applications;
    pid_t latest = 100;
};

class RealSystem
{
public:
    RealSystem()
    {
        folder.write(
            "share/applications/org.Foo.desktop",
            "[Desktop Entry]\nType=Application\nName=Foo\nExec=" + program + "\n"
        );
        folder.copyProgram("/bin/true", std::string(HELPER_BUNDLE) + "/OlvoHelper");
        xdg::XdgEnvironment environment;
        environment.dataFolders = {folder.path("share")};
        catalogue = std::make_unique<xdg::ApplicationCatalogue>(
            environment, xdg::Roles::shipped(), [](std::string_view) {}
        );
        index = std::make_unique<xdg::XdgApplicationIndex>(*catalogue);
        const platform::Bundle own{
            folder.path("Tarvel.app"), "Tarvel", "Tarvel", "com.quorvent.Tarvel"};
        programs = std::make_unique<workspace::OwnPrograms>(own, *index);
        source = std::make_unique<workspace::KernelProcessSource>([](std::string_view) {});
        real = std::make_unique<workspace::LinuxWorkspace>(workspace::LinuxWorkspace::Parts{
            .processes = *source,
            .applications = *programs,
            .windows = nullptr,
            .queues = queue,
            .timers = timers,
            .loadIcon = [](const std::string&) { return platform::IconHandle(); },
            .openUrl = {},
            .report = [](std::string_view) {},
        });
        bool ready = false;
        real->start([&] { ready = true; });
        EXPECT_TRUE(queue.runUntil([&] { return ready; }));
    }

    RealSystem(const RealSystem&) = delete;
    RealSystem& operator=(const RealSystem&) = delete;
    RealSystem(RealSystem&&) = delete;
    RealSystem& operator=(RealSystem&&) = delete;

    /// The source's thread reports to the workspace, so it has to end first.
    ~RealSystem() { source.reset(); }

    platform::Workspace& workspace() { return *real; }

    pid_t startFoo()
    {
        auto child =
            std::make_unique<desktop::ChildProcess>(std::vector<std::string>{program, "60"});
        const pid_t pid = child->id();
        children[pid] = std::move(child);
        return pid;
    }

    void end(pid_t pid) { children.erase(pid); }

    bool waitUntil(const std::function<bool()>& done) { return queue.runUntil(done); }

    std::string helperBundle() const { return folder.path(HELPER_BUNDLE); }

private:
    desktop::TemporaryFolder folder;
    std::string program = folder.copyProgram("/bin/sleep", "bin/foo");
    desktop::MainLoop queue;
    fakes::FakeTimers timers;
    std::unique_ptr<xdg::ApplicationCatalogue> catalogue;
    std::unique_ptr<xdg::XdgApplicationIndex> index;
    std::unique_ptr<workspace::OwnPrograms> programs;
    std::unique_ptr<workspace::KernelProcessSource> source;
    std::unique_ptr<workspace::LinuxWorkspace> real;
    std::map<pid_t, std::unique_ptr<desktop::ChildProcess>> children;
};

/// What an observer of everything is told, one line an event.
class Observer
{
public:
    explicit Observer(platform::Workspace& workspace) : workspace(workspace)
    {
        for (const auto& [name, text] : names) {
            workspace.addObserver(this, name, [this, text = text](const auto& notification) {
                note(text, notification);
            });
        }
        workspace.addKeyPathObserver(
            this,
            platform::RUNNING_APPLICATIONS_KEY_PATH,
            platform::KEY_VALUE_OBSERVING_OPTION_NEW | platform::KEY_VALUE_OBSERVING_OPTION_OLD,
            [this](const std::string&, const auto& change) { noteChange(*change); }
        );
    }

    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;
    Observer(Observer&&) = delete;
    Observer& operator=(Observer&&) = delete;

    ~Observer() { leave(); }

    void leave()
    {
        workspace.removeObserver(this);
        workspace.removeKeyPathObserver(this, platform::RUNNING_APPLICATIONS_KEY_PATH);
    }

    std::vector<std::string> events;
    std::map<pid_t, bool> knownAtLaunch;

private:
    void note(const std::string& text, const platform::WorkspaceNotification& notification)
    {
        const platform::UserInfo& info = *notification.userInfo;
        const auto& application =
            std::get<RunningApplication>(info.at(platform::WORKSPACE_APPLICATION_KEY));
        events.push_back(text + " " + application.bundleIdentifier.value_or(""));
        const auto pid = info.find(platform::APPLICATION_PROCESS_IDENTIFIER_KEY);
        if (pid != info.end()) {
            const auto number = static_cast<pid_t>(std::get<std::int64_t>(pid->second));
            knownAtLaunch[number] = workspace.runningApplication(number).has_value();
        }
    }

    void noteChange(const platform::KeyValueChange& change)
    {
        if (change.newKey) {
            events.push_back("inserted " + change.newKey->front().bundleIdentifier.value_or(""));
        }
        if (change.oldKey) {
            events.push_back("removed " + change.oldKey->front().bundleIdentifier.value_or(""));
        }
    }

    const std::map<WorkspaceNotificationName, std::string> names{
        {WorkspaceNotificationName::WillLaunchApplication, "will launch"},
        {WorkspaceNotificationName::DidLaunchApplication, "did launch"},
        {WorkspaceNotificationName::DidTerminateApplication, "did terminate"}};
    platform::Workspace& workspace;
};

using Events = std::vector<std::string>;

template <typename Kind> class WorkspaceContract : public testing::Test
{
protected:
    bool waitFor(const Observer& observer, std::size_t count)
    {
        return system.waitUntil([&] { return observer.events.size() >= count; });
    }

    Kind system;
};

using Kinds = testing::Types<FakeSystem, RealSystem>;
TYPED_TEST_SUITE(WorkspaceContract, Kinds);

} // namespace

TYPED_TEST(WorkspaceContract, StartIsListedAndThenAnnounced)
{
    const Observer observer(this->system.workspace());

    const pid_t pid = this->system.startFoo();

    ASSERT_TRUE(this->waitFor(observer, 2));
    EXPECT_EQ(observer.events, (Events{"inserted org.Foo", "will launch org.Foo"}));
    EXPECT_TRUE(observer.knownAtLaunch.at(pid));
}

TYPED_TEST(WorkspaceContract, RunningApplicationIsFoundByProcessAndByIdentifier)
{
    const Observer observer(this->system.workspace());
    const pid_t pid = this->system.startFoo();
    ASSERT_TRUE(this->waitFor(observer, 2));

    const auto byProcess = this->system.workspace().runningApplication(pid);
    const auto byIdentifier = this->system.workspace().runningApplications("org.Foo");

    ASSERT_TRUE(byProcess.has_value());
    EXPECT_EQ(byProcess->localizedName, "Foo");
    EXPECT_EQ(byProcess->activationPolicy, platform::ActivationPolicy::Regular);
    ASSERT_EQ(byIdentifier.size(), 1U);
    EXPECT_EQ(byIdentifier.front().processIdentifier, pid);
    EXPECT_TRUE(this->system.workspace().runningApplications("org.Other").empty());
}

TYPED_TEST(WorkspaceContract, EndIsTakenFromTheListAndThenAnnounced)
{
    const Observer observer(this->system.workspace());
    const pid_t pid = this->system.startFoo();
    ASSERT_TRUE(this->waitFor(observer, 2));

    this->system.end(pid);

    ASSERT_TRUE(this->waitFor(observer, 4));
    EXPECT_EQ(observer.events[2], "removed org.Foo");
    EXPECT_EQ(observer.events[3], "did terminate org.Foo");
    EXPECT_FALSE(this->system.workspace().runningApplication(pid).has_value());
}

TYPED_TEST(WorkspaceContract, InstancesAreListedOldestFirst)
{
    const Observer observer(this->system.workspace());
    const pid_t first = this->system.startFoo();
    ASSERT_TRUE(this->waitFor(observer, 2));
    const pid_t second = this->system.startFoo();
    ASSERT_TRUE(this->waitFor(observer, 4));

    const auto found = this->system.workspace().runningApplications("org.Foo");

    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].processIdentifier, first);
    EXPECT_EQ(found[1].processIdentifier, second);
}

TYPED_TEST(WorkspaceContract, ObserverThatLeftHearsNothing)
{
    Observer gone(this->system.workspace());
    const Observer observer(this->system.workspace());
    gone.leave();

    this->system.startFoo();

    ASSERT_TRUE(this->waitFor(observer, 2));
    EXPECT_TRUE(gone.events.empty());
}

TYPED_TEST(WorkspaceContract, InstalledApplicationHasABundle)
{
    platform::Workspace& workspace = this->system.workspace();

    EXPECT_EQ(workspace.absolutePathForAppBundle("org.Foo"), "/Applications/org.Foo.app");
    EXPECT_FALSE(workspace.absolutePathForAppBundle("org.Other").has_value());
    EXPECT_TRUE(workspace.answersTo("org.Foo", "org.Foo"));
    EXPECT_FALSE(workspace.answersTo("org.Foo", "org.Other"));
}

namespace {

/// The helper is a program that ends at once, before anybody can look at it.
class HelperTest : public testing::Test
{
protected:
    RealSystem system;
};

} // namespace

TEST_F(HelperTest, LaunchedHelperIsListedAndItsEndIsSeen)
{
    const Observer observer(system.workspace());

    ASSERT_TRUE(system.workspace().launchApplication(
        system.helperBundle(), platform::LAUNCH_DEFAULT, {{"StartFromMaster", "1"}}
    ));

    ASSERT_TRUE(system.waitUntil([&] { return observer.events.size() >= 2; }));
    EXPECT_EQ(
        observer.events,
        (Events{std::string("inserted ") + HELPER, std::string("removed ") + HELPER})
    );
}

TEST_F(HelperTest, BundleThatIsNotThereCannotBeLaunched)
{
    EXPECT_FALSE(system.workspace().launchApplication(
        "/nowhere/OlvoHelper.app", platform::LAUNCH_DEFAULT, {}
    ));
}
