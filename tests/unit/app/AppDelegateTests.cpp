#include "app/AppDelegate.h"
#include "fakes/FakeLockWindows.h"
#include "fakes/FakePlatform.h"
#include "fakes/Secrets.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using fakes::Calls;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr auto SHOW_POPOVER = "hub showPopover";

class FakeInterfaceHub final : public app::InterfaceHub
{
public:
    explicit FakeInterfaceHub(Calls& calls) : calls(calls) { calls.emplace_back("hub create"); }

    void present() override { calls.emplace_back("hub present"); }

    void showPopover() override { calls.emplace_back(SHOW_POPOVER); }

private:
    Calls& calls;
};

class AppDelegateTest : public testing::Test
{
protected:
    fakes::FakePlatform platform;
    fakes::FakeLockWindows lockWindows{platform.calls};
    storage::ConfigurationAndPreferencesService settings;
    app::AppDelegate delegate{
        hubFactory(), [this] {
            platform.calls.emplace_back("central create");
            return std::make_unique<locking::ApplicationsLockerCentralService>(
                lockWindows.factory(), settings
            );
        }};

    app::AppDelegate::InterfaceHubFactory hubFactory()
    {
        return [this] { return std::make_unique<FakeInterfaceHub>(platform.calls); };
    }

    static std::unique_ptr<app::InterfaceHub> noHub() { return nullptr; }

    static std::unique_ptr<locking::ApplicationsLockerCentralService> noCentralService()
    {
        return nullptr;
    }

    void startWith(const std::vector<std::string>& arguments)
    {
        platform.processInfo.argumentList = arguments;
        delegate.applicationDidFinishLaunching();
    }

    /// The calls without those that only read.
    [[nodiscard]] Calls actions() const
    {
        Calls result = platform.calls;
        std::erase_if(result, [](const std::string& call) {
            return call.starts_with("keychain copyMatching");
        });
        return result;
    }
};

} // namespace

TEST_F(AppDelegateTest, HoldsNothingBeforeTheStart)
{
    EXPECT_EQ(delegate.presetersMainHub, nullptr);
    EXPECT_EQ(delegate.applicationsLockerCentralService, nullptr);
    EXPECT_EQ(delegate.greetingsWindowPresenter, nullptr);
    EXPECT_THAT(platform.calls, ElementsAre());
}

TEST_F(AppDelegateTest, StartsTheInterfaceThenTheLockingServiceThenOpensThePopover)
{
    fakes::storeSecret(platform, "Password", "secret");

    startWith({"/opt/Tarvel.app/Tarvel"});

    EXPECT_THAT(
        actions(),
        ElementsAre(
            "hub create",
            "hub present",
            "central create",
            "workspace addKeyPathObserver runningApplications 3",
            "workspace addObserver willLaunch",
            "workspace addObserver didLaunch",
            "workspace addObserver didTerminate",
            "workspace launch /opt/Tarvel.app/Contents/Library/LoginItems/OlvoHelper.app 65536 "
            "StartFromMaster=1",
            SHOW_POPOVER
        )
    );
    EXPECT_NE(delegate.presetersMainHub, nullptr);
    EXPECT_NE(delegate.applicationsLockerCentralService, nullptr);
    EXPECT_EQ(delegate.greetingsWindowPresenter, nullptr);
}

TEST_F(AppDelegateTest, OpensThePopoverAlsoWithoutAPassword)
{
    startWith({"/opt/Tarvel.app/Tarvel"});

    EXPECT_THAT(
        actions(), ElementsAre("hub create", "hub present", "central create", SHOW_POPOVER)
    );
    EXPECT_THAT(platform.log.lines, ElementsAre("Will not start. No password"));
}

TEST_F(AppDelegateTest, AnArgumentThatBeginsWithThePrefixLeavesThePopoverClosed)
{
    startWith({"/opt/Tarvel.app/Tarvel", "-psn_0_1234"});

    EXPECT_THAT(platform.calls, Not(Contains(SHOW_POPOVER)));
    EXPECT_NE(delegate.applicationsLockerCentralService, nullptr);
}

TEST_F(AppDelegateTest, ThePrefixAloneLeavesThePopoverClosed)
{
    startWith({"/opt/Tarvel.app/Tarvel", "-psn_"});

    EXPECT_THAT(platform.calls, Not(Contains(SHOW_POPOVER)));
}

TEST_F(AppDelegateTest, ThePrefixCountsInAnyArgument)
{
    startWith({"/opt/Tarvel.app/Tarvel", "first", "-psn_1"});

    EXPECT_THAT(platform.calls, Not(Contains(SHOW_POPOVER)));
}

TEST_F(AppDelegateTest, AnArgumentThatContainsThePrefixFurtherOnDoesNotCount)
{
    startWith({"/opt/Tarvel.app/Tarvel", "x-psn_0_1234"});

    EXPECT_THAT(platform.calls, Contains(SHOW_POPOVER));
}

TEST_F(AppDelegateTest, ThePrefixIsCaseSensitiveAndWhole)
{
    startWith({"/opt/Tarvel.app/Tarvel", "-PSN_0", "-psn", "--psn_0"});

    EXPECT_THAT(platform.calls, Contains(SHOW_POPOVER));
}

TEST_F(AppDelegateTest, NoArgumentsAtAllOpenThePopover)
{
    startWith({});

    EXPECT_THAT(platform.calls, Contains(SHOW_POPOVER));
}

TEST_F(AppDelegateTest, EveryRequestToQuitIsRefused)
{
    startWith({"/opt/Tarvel.app/Tarvel"});
    const Calls before = platform.calls;

    EXPECT_EQ(static_cast<int>(delegate.applicationShouldTerminate()), 0);
    EXPECT_EQ(static_cast<int>(delegate.applicationShouldTerminate()), 0);
    EXPECT_EQ(platform.calls, before);
}

TEST_F(AppDelegateTest, TheEndOfTheLastWindowIsNotTheEndOfTheAgent)
{
    EXPECT_FALSE(delegate.applicationShouldTerminateAfterLastWindowClosed());
}

TEST_F(AppDelegateTest, AMissingHubStopsTheProcess)
{
    app::AppDelegate broken{noHub, noCentralService};

    EXPECT_DEATH(broken.applicationDidFinishLaunching(), "fatal: there is no interface hub");
}

TEST_F(AppDelegateTest, AMissingLockingServiceStopsTheProcess)
{
    app::AppDelegate broken{hubFactory(), noCentralService};

    EXPECT_DEATH(
        broken.applicationDidFinishLaunching(), "fatal: there is no central locking service"
    );
}
