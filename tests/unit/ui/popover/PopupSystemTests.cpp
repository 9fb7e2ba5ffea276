#include "PopoverTest.h"

namespace {

class PopupSystem : public PopoverTest
{
protected:
    [[nodiscard]] platform::StatusItemLook look() const { return fake.statusBar.item->draw(); }

    /// Calls the listener when the popover leaves the screen, while it lives.
    class Departure : public QObject
    {
    public:
        Departure(QWidget& window, std::function<void()> listener) : listener(std::move(listener))
        {
            window.installEventFilter(this);
        }

        bool eventFilter(QObject* /*object*/, QEvent* event) override
        {
            if (event->type() == QEvent::Hide) {
                listener();
            }
            return false;
        }

    private:
        std::function<void()> listener;
    };

    static constexpr auto BLACK = ":/images/AppMenuBarIconBlack.svg";
    static constexpr auto WHITE = ":/images/AppMenuBarIconWhite.svg";
};

} // namespace

TEST_F(PopupSystem, PutsOneItemOfVariableLengthUp)
{
    start();
    ASSERT_NE(fake.statusBar.item, nullptr);
    EXPECT_EQ(fake.statusBar.item->length, -1.0);
    EXPECT_EQ(std::count(fake.calls.begin(), fake.calls.end(), "statusBar statusItem"), 1);
    EXPECT_TRUE(fake.statusBar.item->needsDisplay);
    EXPECT_FALSE(popup().active);
}

TEST_F(PopupSystem, ShowsTheDarkIconAndTheWhiteOneInDarkMode)
{
    start();
    EXPECT_EQ(look(), (platform::StatusItemLook{BLACK, false, "Tarvel"}));
    fake.userDefaults.domains["NSGlobalDomain"]["AppleInterfaceStyle"] = "Dark";
    EXPECT_EQ(look(), (platform::StatusItemLook{WHITE, false, "Tarvel"}));
}

TEST_F(PopupSystem, AChangeOfTheAppearanceShowsAtTheNextRedrawAndNotAtOnce)
{
    start();
    settle();
    static_cast<void>(look());
    takeCalls();
    fake.userDefaults.domains["NSGlobalDomain"]["AppleInterfaceStyle"] = "Dark";
    settle();
    EXPECT_FALSE(fake.statusBar.item->needsDisplay);
    EXPECT_EQ(takeCalls(), fakes::Calls());
    EXPECT_EQ(look().image, WHITE);
}

TEST_F(PopupSystem, IsHighlightedAndWhiteWhileActive)
{
    start();
    open();
    EXPECT_TRUE(fake.statusBar.item->needsDisplay);
    EXPECT_EQ(look(), (platform::StatusItemLook{WHITE, true, "Tarvel"}));
    popup().hidePopover();
    EXPECT_TRUE(fake.statusBar.item->needsDisplay);
    EXPECT_EQ(look(), (platform::StatusItemLook{BLACK, false, "Tarvel"}));
}

TEST_F(PopupSystem, TheRequestComesInItsOrder)
{
    start();
    fake.workspace.running = {fakes::runningApplication(7, "com.quorvent.Tarvel", "Tarvel")};
    std::vector<std::string> order;
    popup().onWillShowPopover = [&] {
        order.emplace_back("will show");
        EXPECT_TRUE(fake.dispatchQueues.main.empty());
        EXPECT_TRUE(fake.log.lines.empty());
    };
    takeCalls();
    popup().showPopover();
    EXPECT_EQ(order, std::vector<std::string>{"will show"});
    EXPECT_EQ(fake.dispatchQueues.main.size(), 1U);
    EXPECT_EQ(fake.log.lines, std::vector<std::string>{"Focus"});
    EXPECT_EQ(takeCalls(), fakes::Calls{"workspace activate 7 2"});
    EXPECT_FALSE(popup().active);
    EXPECT_FALSE(window().isVisible());

    fake.dispatchQueues.runMainTurn();
    EXPECT_TRUE(popup().active);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(PopupSystem, ActivatesNothingWhereTheDesktopDoesNotKnowTheProgram)
{
    start();
    popup().onWillShowPopover = nullptr;
    takeCalls();
    popup().showPopover();
    EXPECT_EQ(takeCalls(), fakes::Calls());
}

TEST_F(PopupSystem, TwoRequestsWhileClosedBothShowAndThatIsHarmless)
{
    start();
    popup().showPopover();
    popup().showPopover();
    EXPECT_EQ(fake.dispatchQueues.main.size(), 2U);
    settle();
    EXPECT_TRUE(popup().active);
    EXPECT_EQ(page(), Page::NoPassword);
    popup().hidePopover();
    EXPECT_FALSE(window().isVisible());
}

TEST_F(PopupSystem, ARequestWhileOpenAsksAndActivatesAgainButSchedulesNothing)
{
    start();
    fake.workspace.running = {fakes::runningApplication(7, "com.quorvent.Tarvel", "Tarvel")};
    open();
    int asked = 0;
    popup().onWillShowPopover = [&] { ++asked; };
    takeCalls();
    fake.log.lines.clear();
    popup().showPopover();
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(fake.dispatchQueues.main.empty());
    EXPECT_EQ(fake.log.lines, std::vector<std::string>{"Focus"});
    EXPECT_EQ(takeCalls(), (fakes::Calls{"workspace activate 7 2", "application bringForward"}));
}

TEST_F(PopupSystem, ARequestWhileOpenBringsThePopoverInFrontOfOtherOwnWindows)
{
    start();
    open();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    popup().showPopover();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
}

TEST_F(PopupSystem, AClickOnTheItemToggles)
{
    start();
    int asked = 0;
    popup().onWillShowPopover = [&] { ++asked; };
    clickItem();
    EXPECT_TRUE(popup().active);
    EXPECT_EQ(asked, 1);
    fake.log.lines.clear();
    clickItem();
    EXPECT_FALSE(popup().active);
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(fake.log.lines.empty());
    clickItem();
    EXPECT_TRUE(window().isVisible());
}

TEST_F(PopupSystem, HidingMarksTheItemBeforeThePopoverGoes)
{
    start();
    open();
    takeCalls();
    std::vector<fakes::Calls> callsAtDeparture;
    const Departure departure(window(), [&] {
        EXPECT_FALSE(popup().active);
        callsAtDeparture.push_back(fake.calls);
    });
    popup().hidePopover();
    EXPECT_EQ(
        callsAtDeparture, std::vector<fakes::Calls>{fakes::Calls{"statusItem setNeedsDisplay"}}
    );
}

TEST_F(PopupSystem, HidingWhileClosedDoesNothing)
{
    start();
    takeCalls();
    popup().hidePopover();
    EXPECT_EQ(takeCalls(), fakes::Calls());
}

TEST_F(PopupSystem, ClicksInOtherProgramsCloseItWithEitherButton)
{
    start();
    ASSERT_EQ(fake.eventMonitors.global.size(), 1U);
    EXPECT_EQ(fake.eventMonitors.global.begin()->second.mask, 10U);
    EXPECT_TRUE(fake.eventMonitors.local.empty());
    for (const auto mask :
         {platform::EVENT_MASK_LEFT_MOUSE_DOWN, platform::EVENT_MASK_RIGHT_MOUSE_DOWN}) {
        open();
        EXPECT_TRUE(popup().active);
        clickElsewhere(mask);
        EXPECT_FALSE(popup().active);
        EXPECT_FALSE(window().isVisible());
    }
}

TEST_F(PopupSystem, AClickElsewhereWhileClosedDoesNothing)
{
    start();
    takeCalls();
    clickElsewhere();
    EXPECT_EQ(takeCalls(), fakes::Calls());
}

TEST_F(PopupSystem, TheMenuOffersToOpenAndNothingElse)
{
    startWith(PASSWORD);
    const auto& menu = fake.statusBar.item->menu;
    ASSERT_EQ(menu.size(), 1U);
    EXPECT_EQ(menu.front().title, "Open Tarvel");
    menu.front().action();
    settle();
    EXPECT_EQ(page(), Page::Password);
    menu.front().action(); // it never closes what is open
    settle();
    EXPECT_EQ(page(), Page::Password);
}

TEST_F(PopupSystem, WithoutAListenerItShowsAllTheSame)
{
    start();
    popup().onWillShowPopover = nullptr;
    open();
    EXPECT_TRUE(popup().active);
}

TEST_F(PopupSystem, AListenerMayTakeItselfAway)
{
    start();
    popup().onWillShowPopover = [this] { popup().onWillShowPopover = nullptr; };
    open();
    EXPECT_TRUE(popup().active);
}

TEST_F(PopupSystem, WithoutAStatusAreaItOpensAsAWindowAndSaysSoOnce)
{
    start();
    fake.statusBar.shown = false;
    for (int opening = 0; opening < 2; ++opening) {
        open();
        EXPECT_TRUE(window().isVisible());
        EXPECT_EQ(window().windowTitle(), "Tarvel");
        EXPECT_FALSE(window().windowFlags().testFlag(Qt::FramelessWindowHint));
        popup().hidePopover();
    }
    ASSERT_EQ(fake.log.diagnostics.size(), 1U);
    EXPECT_NE(fake.log.diagnostics.front().find("no status area"), std::string::npos);
}

TEST_F(PopupSystem, AStatusAreaThatComesLateIsUsedAtTheNextOpening)
{
    start();
    fake.statusBar.shown = false;
    open();
    fake.statusBar.shown = true;
    popup().hidePopover();
    open();
    EXPECT_TRUE(window().windowFlags().testFlag(Qt::FramelessWindowHint));
}

TEST_F(PopupSystem, LateWorkOfOneThatIsGoneDoesNothing)
{
    start();
    popup().showPopover();
    presenter.reset();
    settle();
    clickElsewhere();
    EXPECT_EQ(fake.statusBar.item, nullptr);
}

TEST_F(PopupSystem, AnOpenPopoverGoesToItsItemWhenThatGetsItsPlace)
{
    start();
    fake.statusBar.frame.reset();
    open();
    putItemAt({40, 0, 22, 22});
    static_cast<void>(look());
    fake.dispatchQueues.runAll();
    const QRect frame = window().frameGeometry();
    EXPECT_TRUE(frame.left() <= 40 && 40 <= frame.right()) << frame.left() << " " << frame.right();
    EXPECT_TRUE(window().isVisible());
}
