// The four routes of the hub.
#include "PresetersMainHubTest.h"

#include <QApplication>
#include <QEvent>

#include <algorithm>
#include <array>
#include <functional>
#include <utility>
#include <vector>

namespace {

using PresetersMainHub = PresetersMainHubTest;

/// In which order windows come and go while it lives.
class WindowChronicle : public QObject
{
public:
    WindowChronicle() { qApp->installEventFilter(this); }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Show || event->type() == QEvent::Hide) {
            events.emplace_back(object, event->type());
        }
        return false;
    }

    /// Of the first such event; `count` when there was none.
    [[nodiscard]] std::size_t position(const QObject& window, QEvent::Type type) const
    {
        const auto found = std::find(events.begin(), events.end(), Entry(&window, type));
        return static_cast<std::size_t>(found - events.begin());
    }

    [[nodiscard]] std::size_t count() const { return events.size(); }

private:
    using Entry = std::pair<const QObject*, QEvent::Type>;

    std::vector<Entry> events;
};

} // namespace

TEST_F(PresetersMainHub, EachRequestOfThePopoverHasItsRoute)
{
    setPassword();
    present();

    askForHelp();
    EXPECT_TRUE(help().isVisible());
    EXPECT_EQ(hub->preferencesWindowPresenter, nullptr);
    askForPreferences();
    EXPECT_TRUE(preferences().isVisible());
    EXPECT_EQ(hub->selectApplicationsWindowPresenter, nullptr);
    askForSelection();
    EXPECT_TRUE(selection().isVisible());
}

TEST_F(PresetersMainHub, AskingTwiceForThePreferencesMakesThemOnceAndBringsThemForwardEmpty)
{
    setPassword();
    present();
    askForPreferences();
    const auto* const first = hub->preferencesWindowPresenter.get();
    auto& field =
        *hub->preferencesWindowPresenter->preferencesWindowController->passwordTextFieldOutlet;
    field.setStringValue("typed");
    askForHelp();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&help()));

    askForPreferences();
    EXPECT_EQ(hub->preferencesWindowPresenter.get(), first);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&preferences()));
    EXPECT_EQ(field.stringValue(), "");
}

TEST_F(PresetersMainHub, AskingTwiceForHelpMakesItOnceAndBringsItForward)
{
    setPassword();
    present();
    askForHelp();
    const auto* const first = hub->helpWindowPresenter.get();
    const QWidget* const window = &help();
    askForPreferences();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&preferences()));

    askForHelp();
    EXPECT_EQ(hub->helpWindowPresenter.get(), first);
    EXPECT_EQ(&help(), window);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&help()));
}

TEST_F(PresetersMainHub, AskingTwiceForTheSelectionMakesItOnceAndBringsItForward)
{
    setPassword();
    present();
    askForSelection();
    const auto* const first = hub->selectApplicationsWindowPresenter.get();
    const QWidget* const window = &selection();
    askForHelp();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&help()));

    askForSelection();
    EXPECT_EQ(hub->selectApplicationsWindowPresenter.get(), first);
    EXPECT_EQ(&selection(), window);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&selection()));
}

TEST_F(PresetersMainHub, AWindowThatWasClosedOpensAgainAtTheNextRequest)
{
    setPassword();
    present();
    askForHelp();
    askForPreferences();
    askForSelection();
    help().close();
    preferences().close();
    selection().close();

    askForHelp();
    askForPreferences();
    askForSelection();
    EXPECT_TRUE(help().isVisible());
    EXPECT_TRUE(preferences().isVisible());
    EXPECT_TRUE(selection().isVisible());
}

TEST_F(PresetersMainHub, EveryRouteToAWindowHidesThePopover)
{
    setPassword();
    present();
    const std::array<std::function<void()>, 3> requests{
        [this] { askForPreferences(); }, [this] { askForHelp(); }, [this] { askForSelection(); }};
    for (const auto& ask : requests) {
        for (int time = 0; time < 2; ++time) {
            showPopover();
            ASSERT_TRUE(popoverIsShown());
            fake.statusBar.item->needsDisplay = false;
            ask();
            EXPECT_FALSE(popoverIsShown());
            EXPECT_TRUE(fake.statusBar.item->needsDisplay);
        }
    }
}

TEST_F(PresetersMainHub, APopoverThatIsNotShownIsLeftAlone)
{
    setPassword();
    present();
    fake.statusBar.item->needsDisplay = false;
    askForHelp();

    EXPECT_FALSE(popoverIsShown());
    EXPECT_FALSE(fake.statusBar.item->needsDisplay);
}

TEST_F(PresetersMainHub, TheGreetingLeadsToThePreferencesAndIsClosedFirst)
{
    present();
    ASSERT_TRUE(greeting().isVisible());
    const auto* const greeter = hub->greetingsWindowPresenter.get();
    click(greeting(), "setupPasswordButton");

    EXPECT_FALSE(greeting().isVisible());
    EXPECT_TRUE(preferences().isVisible());
    EXPECT_EQ(hub->greetingsWindowPresenter.get(), greeter); // kept
}

TEST_F(PresetersMainHub, TheGreetingIsGoneBeforeThePreferencesAppear)
{
    present();
    WindowChronicle chronicle;
    click(greeting(), "setupPasswordButton");

    const std::size_t gone = chronicle.position(greeting(), QEvent::Hide);
    const std::size_t there = chronicle.position(preferences(), QEvent::Show);
    ASSERT_LT(there, chronicle.count());
    EXPECT_LT(gone, there);
}

TEST_F(PresetersMainHub, ThePopoversWayToThePreferencesClosesTheGreetingToo)
{
    present();
    showPopover();
    askForPreferences();

    EXPECT_FALSE(greeting().isVisible());
    EXPECT_FALSE(popoverIsShown());
    EXPECT_TRUE(preferences().isVisible());
}

TEST_F(PresetersMainHub, TheGreetingsHelpLeavesItOpen)
{
    present();
    click(greeting(), "helpButton");

    EXPECT_TRUE(help().isVisible());
    EXPECT_TRUE(greeting().isVisible());
}

TEST_F(PresetersMainHub, ANewPasswordOpensThePopoverWhichAsksForIt)
{
    present();
    click(greeting(), "setupPasswordButton");
    confirmNewPassword();
    EXPECT_FALSE(preferences().isVisible());
    fake.dispatchQueues.runAll();

    EXPECT_TRUE(popoverIsShown());
    EXPECT_EQ(popover().state, ui::PopoverViewController::State::PasswordRequired);
    EXPECT_EQ(fakes::secret(fake, "Password"), "secret");
}

TEST_F(PresetersMainHub, ANewPasswordIsAskedForInAPopoverThatWasOpenedMeanwhile)
{
    present();
    click(greeting(), "setupPasswordButton");
    showPopover();
    ASSERT_TRUE(popover().noPasswordViewController->view().isVisible());
    confirmNewPassword();
    fake.dispatchQueues.runAll();

    EXPECT_TRUE(popoverIsShown());
    EXPECT_EQ(popover().state, ui::PopoverViewController::State::PasswordRequired);
    EXPECT_FALSE(popover().noPasswordViewController->view().isVisible());
    EXPECT_TRUE(popover().requestPasswordViewController->view().isVisible());
}

TEST_F(PresetersMainHub, CancellingThePreferencesOpensNothing)
{
    present();
    click(greeting(), "setupPasswordButton");
    click(preferences(), "cancelButton");
    fake.dispatchQueues.runAll();

    EXPECT_FALSE(preferences().isVisible());
    EXPECT_FALSE(popoverIsShown());
    EXPECT_FALSE(greeting().isVisible());
}
