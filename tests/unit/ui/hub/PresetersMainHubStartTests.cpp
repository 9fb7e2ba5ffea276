// The start of the program with its real interface, and what ends it.
#include "PresetersMainHubTest.h"
#include "app/AppDelegate.h"
#include "fakes/FakeLockWindows.h"

#include <QApplication>
#include <QEvent>

#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::ThemedEnvironment);

class PresetersMainHubStart : public PresetersMainHubTest
{
protected:
    /// What `main` does, with these arguments.
    void startWith(const std::vector<std::string>& arguments)
    {
        fake.processInfo.argumentList = arguments;
        delegate.applicationDidFinishLaunching();
        fake.dispatchQueues.runAll();
    }

    [[nodiscard]] const ui::PresetersMainHub& started() const
    {
        return dynamic_cast<const ui::PresetersMainHub&>(*delegate.presetersMainHub);
    }

    [[nodiscard]] bool opensThePopover() const
    {
        return started().popoverInterfacePresenter->popupSystem->active;
    }

    fakes::FakeLockWindows lockWindows{fake.calls};
    app::AppDelegate delegate{
        [] { return std::make_unique<ui::PresetersMainHub>(); },
        [this] {
            return std::make_unique<locking::ApplicationsLockerCentralService>(lockWindows.factory()
            );
        }};
};

/// Enters the greeting's appearance on the screen among the calls, while it lives.
class NotedGreeting : public QObject
{
public:
    static constexpr auto NOTE = "the greeting appears";

    explicit NotedGreeting(fakes::Calls& calls) : calls(calls) { qApp->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Show && object->objectName() == "GreetingsWindow") {
            calls.emplace_back(NOTE);
        }
        return false;
    }

private:
    fakes::Calls& calls;
};

constexpr auto PROGRAM = "/opt/Tarvel.app/Tarvel";

} // namespace

TEST_F(PresetersMainHubStart, ANewHubHasAPopoverPresenterAndNothingElse)
{
    hub = std::make_unique<ui::PresetersMainHub>();

    EXPECT_NE(hub->popoverInterfacePresenter, nullptr);
    EXPECT_EQ(hub->helpWindowPresenter, nullptr);
    EXPECT_EQ(hub->greetingsWindowPresenter, nullptr);
    EXPECT_EQ(hub->preferencesWindowPresenter, nullptr);
    EXPECT_EQ(hub->selectApplicationsWindowPresenter, nullptr);
    EXPECT_EQ(
        &hub->configurationAndPreferencesService,
        &storage::ConfigurationAndPreferencesService::sharedInstance()
    );
    EXPECT_EQ(fake.statusBar.item, nullptr);
}

TEST_F(PresetersMainHubStart, WithoutAPasswordTheGreetingComesAndThenTheStatusItem)
{
    const NotedGreeting greeted(fake.calls);
    present();
    const std::string asked = "keychain copyMatching " + fakes::accountOf("Password");
    const auto item = std::find(fake.calls.begin(), fake.calls.end(), "statusBar statusItem");
    const auto shown = std::find(fake.calls.begin(), item, NotedGreeting::NOTE);

    ASSERT_NE(item, fake.calls.end());
    EXPECT_NE(shown, item);
    EXPECT_NE(std::find(fake.calls.begin(), shown, asked), shown);
    EXPECT_TRUE(greeting().isVisible());
    EXPECT_NE(fake.statusBar.item, nullptr);
}

TEST_F(PresetersMainHubStart, WithAPasswordThereIsNoGreeting)
{
    setPassword();
    present();

    EXPECT_EQ(hub->greetingsWindowPresenter, nullptr);
    EXPECT_NE(fake.statusBar.item, nullptr);
}

TEST_F(PresetersMainHubStart, AStoredEmptyPasswordIsNone)
{
    fakes::storeSecret(fake, "Password", "");
    present();

    EXPECT_NE(hub->greetingsWindowPresenter, nullptr);
}

TEST_F(PresetersMainHubStart, TheLazyPresentersAreNotMadeByTheStart)
{
    startWith({PROGRAM});

    EXPECT_EQ(started().helpWindowPresenter, nullptr);
    EXPECT_EQ(started().preferencesWindowPresenter, nullptr);
    EXPECT_EQ(started().selectApplicationsWindowPresenter, nullptr);
}

TEST_F(PresetersMainHubStart, TheProgramsPathAloneOpensThePopover)
{
    startWith({PROGRAM});
    EXPECT_TRUE(opensThePopover());
}

TEST_F(PresetersMainHubStart, NoArgumentsAtAllOpenThePopover)
{
    startWith({});
    EXPECT_TRUE(opensThePopover());
}

TEST_F(PresetersMainHubStart, AnArgumentThatBeginsWithThePrefixLeavesThePopoverClosed)
{
    startWith({PROGRAM, "-psn_0_1234"});
    EXPECT_FALSE(opensThePopover());
}

TEST_F(PresetersMainHubStart, ThePrefixAloneLeavesThePopoverClosed)
{
    startWith({PROGRAM, "-psn_"});
    EXPECT_FALSE(opensThePopover());
}

TEST_F(PresetersMainHubStart, AnArgumentThatContainsThePrefixFurtherOnOpensThePopover)
{
    startWith({PROGRAM, "x-psn_0_1234"});
    EXPECT_TRUE(opensThePopover());
}

TEST_F(PresetersMainHubStart, EveryRequestToQuitIsRefusedAndOnlyTheQuitCommandEndsTheProcess)
{
    startWith({PROGRAM});
    EXPECT_EQ(delegate.applicationShouldTerminate(), app::TerminateReply::Cancel);
    EXPECT_FALSE(delegate.applicationShouldTerminateAfterLastWindowClosed());
    fake.calls.clear();

    EXPECT_THROW(
        started().popoverInterfacePresenter->popoverViewController->quitApplicationMenuButtonClick(
        ),
        fakes::ProcessEnded
    );
    EXPECT_THAT(
        fake.calls,
        ElementsAre(
            "distributedNotifications post TERMINATE_HELPER_TARVEL com.quorvent.Tarvel",
            "processInfo exit 0"
        )
    );
}
