// The popover never shows its content before the right password was typed in it, at every opening.
#include "PopoverTest.h"

#include <QAccessible>

namespace {

class PageRule : public PopoverTest
{
protected:
    static constexpr auto EMPTY = "";

    void changeSettings()
    {
        presenter->configurationAndPreferencesService.setApplicationIsActive(true);
        settle();
    }
};

/// All that assistive tools can read from there on, seen or not.
QString spoken(QAccessibleInterface* from)
{
    QString text;
    for (const auto kind :
         {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help}) {
        text += from->text(kind) + "\n";
    }
    for (int index = 0; index < from->childCount(); ++index) {
        text += spoken(from->child(index));
    }
    return text;
}

} // namespace

TEST_F(PageRule, WithoutAPasswordOnlyTheNoPasswordPageIsShown)
{
    start();
    open();
    EXPECT_EQ(page(), Page::NoPassword);
}

TEST_F(PageRule, AnEmptyStoredPasswordIsNone)
{
    startWith(EMPTY, BOTH);
    open();
    EXPECT_EQ(page(), Page::NoPassword);
}

TEST_F(PageRule, WithAPasswordItIsAskedForFirst)
{
    startWith(PASSWORD, BOTH);
    open();
    EXPECT_EQ(page(), Page::Password);
}

TEST_F(PageRule, TheRightPasswordShowsTheContentAtOnce)
{
    startWith(PASSWORD, BOTH);
    open();
    unlock();
    EXPECT_EQ(page(), Page::Content);
    EXPECT_EQ(controller().state, ui::PopoverViewController::State::Unlocked);
    EXPECT_EQ(rows(), (std::vector<std::string>{"Calculator", "Mahjongg"}));
}

TEST_F(PageRule, AnyOtherTextLeavesThePasswordPage)
{
    startWith(PASSWORD, BOTH);
    open();
    for (const char* wrong : {"", " ", "Secret", "secret ", " secret", "secre", "secrets"}) {
        enter(wrong);
        EXPECT_EQ(page(), Page::Password) << wrong;
        EXPECT_EQ(controller().state, ui::PopoverViewController::State::PasswordRequired);
    }
    unlock();
    EXPECT_EQ(page(), Page::Content);
}

TEST_F(PageRule, EveryReopeningAsksAgainHoweverItWasClosed)
{
    startWith(PASSWORD, BOTH);
    const std::vector<std::function<void()>> waysToClose{
        [this] { clickItem(); },
        [this] { clickElsewhere(); },
        [this] { presenter->hideService(); },
        [this] { QTest::keyClick(&window(), Qt::Key_Escape); },
        [this] { window().close(); },
        [this] {
            Q_EMIT
            qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
        },
    };
    for (std::size_t way = 0; way < waysToClose.size(); ++way) {
        open();
        EXPECT_EQ(page(), Page::Password) << way;
        unlock();
        EXPECT_EQ(page(), Page::Content) << way;
        waysToClose[way]();
        settle();
        EXPECT_EQ(page(), Page::None) << way;
        EXPECT_FALSE(popup().active) << way;
        EXPECT_EQ(controller().state, ui::PopoverViewController::State::PasswordRequired) << way;
    }
}

TEST_F(PageRule, NothingOfTheContentIsLeftWithinReachOfAClosedPopover)
{
    startWith(PASSWORD, BOTH);
    open();
    unlock();
    popup().hidePopover();
    EXPECT_FALSE(controller().activateApplicationCheckboxOutlet->isEnabled());
    EXPECT_FALSE(controller().menuButtonOutlet->isEnabled());
    EXPECT_TRUE(controller().tableHeaderViewOutlet->isHidden());
    open();
    EXPECT_FALSE(controller().activateApplicationCheckboxOutlet->isEnabled());
    unlock();
    EXPECT_TRUE(controller().activateApplicationCheckboxOutlet->isEnabled());
    EXPECT_TRUE(controller().menuButtonOutlet->isEnabled());
}

TEST_F(PageRule, NothingIsToldToAssistiveToolsOfWhatIsProtectedBehindTheGate)
{
    const auto tells = [this](const char* name) {
        return spoken(QAccessible::queryAccessibleInterface(&controller().view())).contains(name);
    };
    startWith(PASSWORD, CALCULATOR);
    for (int opening = 0; opening < 2; ++opening) {
        open();
        EXPECT_FALSE(tells("Calculator"));
        presenter->configurationAndPreferencesService.addLockedApplicationBundleId(MAHJONGG);
        settle();
        EXPECT_FALSE(tells("Calculator"));
        EXPECT_FALSE(tells("Mahjongg"));
        EXPECT_EQ(table().model()->rowCount(), 0);
        unlock();
        EXPECT_EQ(rows(), (std::vector<std::string>{"Calculator", "Mahjongg"}));
        presenter->configurationAndPreferencesService.removeLockedApplicationBundleId(MAHJONGG);
        settle();
        EXPECT_EQ(rows(), (std::vector<std::string>{"Calculator"}));
        popup().hidePopover();
        EXPECT_FALSE(tells("Calculator"));
        EXPECT_FALSE(tells("Mahjongg"));
        EXPECT_TRUE(table().findChildren<ui::MyCell*>().isEmpty()); // with its buttons' names
        changeSettings();
        EXPECT_FALSE(tells("Calculator"));
    }
}

TEST_F(PageRule, ASettingsChangeShowsNothingOfTheContent)
{
    startWith(PASSWORD);
    changeSettings(); // before the view is there
    open();
    changeSettings();
    EXPECT_EQ(page(), Page::Password);
    presenter->configurationAndPreferencesService.addLockedApplicationBundleId(CALCULATOR);
    settle();
    EXPECT_EQ(page(), Page::Password);
    popup().hidePopover();
    changeSettings();
    EXPECT_EQ(page(), Page::None);
    open();
    EXPECT_EQ(page(), Page::Password);
}

TEST_F(PageRule, ASettingsChangeOfAnEmptyListShowsNothingBehindTheNoPasswordPage)
{
    start();
    open();
    changeSettings();
    EXPECT_EQ(page(), Page::NoPassword);
}

TEST_F(PageRule, ASecondStartLeavesTheGateShut)
{
    startWith(PASSWORD, BOTH);
    open();
    open();
    EXPECT_EQ(page(), Page::Password);
    enter("wrong");
    open();
    EXPECT_EQ(page(), Page::Password);
}

TEST_F(PageRule, ASecondStartWhileUnlockedIsNoOpeningAnew)
{
    startWith(PASSWORD, BOTH);
    open();
    unlock();
    open();
    EXPECT_EQ(page(), Page::Content);
    popup().hidePopover();
    open();
    EXPECT_EQ(page(), Page::Password);
}

TEST_F(PageRule, SeveralRequestsBeforeItAppearsAreOneOpening)
{
    startWith(PASSWORD, BOTH);
    popup().showPopover();
    popup().showPopover();
    fake.statusBar.item->onMouseDown();
    settle();
    EXPECT_EQ(page(), Page::Password);
    unlock();
    popup().hidePopover();
    EXPECT_EQ(page(), Page::None);
}

TEST_F(PageRule, ClosingWhileItIsStillToAppearShowsTheGate)
{
    startWith(PASSWORD, BOTH);
    open();
    unlock();
    popup().hidePopover();
    popup().showPopover();
    popup().hidePopover();
    settle();
    EXPECT_EQ(page(), Page::Password);
}

TEST_F(PageRule, APasswordThatIsSetMeanwhileIsAskedForAtOnce)
{
    start();
    open();
    EXPECT_EQ(page(), Page::NoPassword);
    presenter->configurationAndPreferencesService.setApplicationPassword(PASSWORD);
    settle();
    EXPECT_EQ(page(), Page::Password);
    EXPECT_EQ(controller().state, ui::PopoverViewController::State::PasswordRequired);
    EXPECT_EQ(window().focusWidget(), &field());
    unlock();
    EXPECT_EQ(page(), Page::Content);
}

TEST_F(PageRule, APasswordThatIsSetMeanwhileIsAskedForAtOnceAfterAFurtherStartToo)
{
    start();
    open();
    open();
    presenter->configurationAndPreferencesService.setApplicationPassword(PASSWORD);
    open(); // as the confirmation does
    EXPECT_EQ(page(), Page::Password);
    EXPECT_EQ(controller().state, ui::PopoverViewController::State::PasswordRequired);
}

TEST_F(PageRule, APasswordThatIsSetWhileItIsClosedOpensNothing)
{
    start();
    open();
    popup().hidePopover();
    presenter->configurationAndPreferencesService.setApplicationPassword(PASSWORD);
    settle();
    EXPECT_EQ(page(), Page::None);
    open();
    EXPECT_EQ(page(), Page::Password);
}

TEST_F(PageRule, AnotherPasswordAndNoneLeaveTheContentThatIsShown)
{
    startWith(PASSWORD, BOTH);
    open();
    unlock();
    for (const char* password : {"other", EMPTY, PASSWORD}) {
        presenter->configurationAndPreferencesService.setApplicationPassword(password);
        settle();
        EXPECT_EQ(page(), Page::Content) << password;
        EXPECT_EQ(controller().state, ui::PopoverViewController::State::Unlocked);
    }
}

TEST_F(PageRule, APasswordThatIsTakenAwayLeavesTheGate)
{
    startWith(PASSWORD, BOTH);
    open();
    presenter->configurationAndPreferencesService.setApplicationPassword(EMPTY);
    settle();
    EXPECT_EQ(page(), Page::Password);
}

TEST_F(PageRule, ThePasswordOfTheMomentCounts)
{
    startWith(PASSWORD, BOTH);
    open();
    presenter->configurationAndPreferencesService.setApplicationPassword("other");
    enter(PASSWORD);
    EXPECT_EQ(page(), Page::Password);
    enter("other");
    EXPECT_EQ(page(), Page::Content);
}

TEST_F(PageRule, APasswordThatIsGoneOpensNothing)
{
    startWith(PASSWORD, BOTH);
    open();
    presenter->configurationAndPreferencesService.setApplicationPassword(EMPTY);
    enter(EMPTY);
    EXPECT_EQ(page(), Page::Password);
    enter(PASSWORD);
    EXPECT_EQ(page(), Page::Password);
    popup().hidePopover();
    open();
    EXPECT_EQ(page(), Page::NoPassword);
}

TEST_F(PageRule, AKeychainThatFailsOpensNothing)
{
    startWith(PASSWORD, BOTH);
    open();
    fake.keychainItems.failing = true;
    enter(EMPTY);
    EXPECT_EQ(page(), Page::Password);
    enter(PASSWORD);
    EXPECT_EQ(page(), Page::Password);
    popup().hidePopover();
    open();
    EXPECT_EQ(page(), Page::NoPassword);
}

TEST_F(PageRule, AfterAnUnlockedOpeningNoPasswordShowsOnlyItsPage)
{
    startWith(PASSWORD, BOTH);
    open();
    unlock();
    popup().hidePopover();
    presenter->configurationAndPreferencesService.setApplicationPassword(EMPTY);
    open();
    EXPECT_EQ(page(), Page::NoPassword);
}

TEST_F(PageRule, WhatWasTypedDoesNotOutliveTheOpening)
{
    startWith(PASSWORD, BOTH);
    open();
    field().setText("almost");
    popup().hidePopover();
    open();
    EXPECT_EQ(field().text(), "");
    unlock();
    EXPECT_EQ(field().text(), "");
    EXPECT_EQ(page(), Page::Content);
}
