// What the lock window asks of the desktop, step by step, and what it reports to its owner.
#include "LockWindowTest.h"
#include "locking/CoveringWindow.h"
#include "qt/QtEnvironment.h"

#include <QCloseEvent>
#include <QPushButton>
#include <QTest>

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QApplication>);

using PasswordWindowController = LockWindowTest;

const fakes::Calls BROUGHT_TO_FRONT{"window 1 makeKeyAndOrderFront", "application activate true"};

const fakes::Calls TORN_DOWN{
    "workspace removeObserver didActivate",
    "workspace removeObserver didDeactivate",
    "workspace removeObserver",
    "eventMonitors removeMonitor",
    "eventMonitors removeMonitor"};

} // namespace

TEST_F(PasswordWindowController, LoadingObservesAndMonitorsThenGivesTheWindowItsAttributes)
{
    EXPECT_EQ(
        takeCalls(),
        (fakes::Calls{
            "workspace addObserver didActivate",
            "workspace addObserver didDeactivate",
            "eventMonitors addLocalMonitor",
            "eventMonitors addGlobalMonitor",
            "windows adopt 1"})
    );
    EXPECT_EQ(fake.eventMonitors.local.begin()->second.mask, 0x1000U);
    EXPECT_EQ(fake.eventMonitors.global.begin()->second.mask, 0x1000U);
    EXPECT_FALSE(window().isVisible());
}

TEST_F(PasswordWindowController, TheWindowIsBorderlessOnAllSpacesAtScreenSaverLevelOnTheMainScreen)
{
    const platform::WindowAttributes& attributes = fake.windows.windows.at(1).attributes;
    EXPECT_EQ(attributes.backgroundColor, platform::LOCK_COLOR);
    EXPECT_FALSE(attributes.opaque);
    EXPECT_EQ(attributes.level, platform::WindowLevelKey::ScreenSaver);
    EXPECT_EQ(attributes.collectionBehavior, 1U);
    EXPECT_EQ(attributes.styleMask, 0U);
    EXPECT_EQ(attributes.frame, fake.screens.list->front().frame);
    EXPECT_EQ(window().size(), QSize(1280, 720));
    EXPECT_TRUE(controller->window().canBecomeKeyWindow());
}

TEST_F(PasswordWindowController, ShowTakesOverThePresentationAtOnceAndTheFocusOnTheMainQueue)
{
    takeCalls();
    controller->showServiceWindow("Calculator is locked", nullptr);
    EXPECT_EQ(takeCalls(), fakes::Calls{"application setPresentationOptions 0x16D"});
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(outlet<QLabel>("appNameLabelOutlet").text(), "Calculator is locked");

    fake.dispatchQueues.runMainTurn();
    EXPECT_EQ(takeCalls(), BROUGHT_TO_FRONT);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(window().focusWidget(), &field());
    EXPECT_TRUE(fake.dispatchQueues.main.empty());
}

TEST_F(PasswordWindowController, FocusRepeatsTheSameStepsOnTheMainQueue)
{
    show();
    takeCalls();
    controller->focus();
    EXPECT_TRUE(takeCalls().empty());

    fake.dispatchQueues.runMainTurn();
    EXPECT_EQ(takeCalls(), BROUGHT_TO_FRONT);
}

TEST_F(PasswordWindowController, FocusDoesNotTouchWhatIsBeingTyped)
{
    show();
    type("sec");
    controller->focus();
    fake.dispatchQueues.runAll();
    type("ret");

    EXPECT_EQ(field().text(), "secret");
}

TEST_F(PasswordWindowController, ReturnPassesTheExactTextIncludingSpaces)
{
    show();
    type("  pass Wörd🔒 ");
    pressReturn();

    EXPECT_EQ(entered, std::vector<std::string>{"  pass Wörd🔒 "});
}

TEST_F(PasswordWindowController, ReturnInAnEmptyFieldPassesTheEmptyText)
{
    show();
    pressReturn();

    EXPECT_EQ(entered, std::vector<std::string>{""});
}

TEST_F(PasswordWindowController, TheEnterKeyOfTheKeypadSubmitsToo)
{
    show();
    type("x");
    press(Qt::Key_Enter, "\r", Qt::KeypadModifier);

    EXPECT_EQ(entered, std::vector<std::string>{"x"});
}

TEST_F(PasswordWindowController, ReturnClearsTheErrorKeepsTheTextAndTheFocus)
{
    show();
    controller->displayErrorMessage("no");
    fake.dispatchQueues.runAll();
    type("wrong");
    std::string errorWhenEntered = "not called";
    controller->passwordEntered = [&](const std::string& /*typed*/) {
        errorWhenEntered = outlet<QLabel>("errorMessageLabelOutlet").text().toStdString();
    };
    pressReturn();

    EXPECT_EQ(errorWhenEntered, "");
    EXPECT_EQ(field().text(), "wrong");
    EXPECT_EQ(window().focusWidget(), &field());
}

TEST_F(PasswordWindowController, WhatIsTypedAfterASubmissionReplacesTheText)
{
    show();
    type("wrong");
    pressReturn();
    type("right");
    pressReturn();

    EXPECT_EQ(entered, (std::vector<std::string>{"wrong", "right"}));
}

TEST_F(PasswordWindowController, AnyOtherMovementDoesNothing)
{
    show();
    type("secret");
    controller->displayErrorMessage("no");
    fake.dispatchQueues.runAll();
    press(Qt::Key_Tab, "\t");
    press(Qt::Key_Backtab, QString(), Qt::ShiftModifier);
    field().clearFocus();
    controller->controlTextDidEndEditing(toolkit::TextMovement::Other);

    EXPECT_TRUE(entered.empty());
    EXPECT_EQ(field().text(), "secret");
    EXPECT_EQ(outlet<QLabel>("errorMessageLabelOutlet").text(), "no");
}

TEST_F(PasswordWindowController, AnUnsetCallbackDropsThePassword)
{
    show();
    controller->passwordEntered = nullptr;
    type("secret");
    pressReturn();

    EXPECT_EQ(field().text(), "secret");
}

TEST_F(PasswordWindowController, TheErrorIsShownLaterOnTheMainQueueAndAnEmptyOneClearsIt)
{
    show();
    controller->displayErrorMessage("no");
    EXPECT_EQ(outlet<QLabel>("errorMessageLabelOutlet").text(), "");
    fake.dispatchQueues.runMainTurn();
    EXPECT_EQ(outlet<QLabel>("errorMessageLabelOutlet").text(), "no");

    controller->displayErrorMessage("");
    fake.dispatchQueues.runMainTurn();
    EXPECT_EQ(outlet<QLabel>("errorMessageLabelOutlet").text(), "");
}

TEST_F(PasswordWindowController, TeardownRemovesObserversThenMonitors)
{
    show();
    takeCalls();
    controller->teardown();

    EXPECT_EQ(takeCalls(), TORN_DOWN);
    EXPECT_TRUE(fake.eventMonitors.local.empty());
    EXPECT_TRUE(fake.eventMonitors.global.empty());
    EXPECT_TRUE(window().isVisible());
}

TEST_F(PasswordWindowController, ASecondTeardownFindsNoMonitorsToRemove)
{
    controller->teardown();
    takeCalls();
    controller->teardown();

    EXPECT_EQ(takeCalls(), fakes::Calls(TORN_DOWN.begin(), TORN_DOWN.begin() + 3));
}

TEST_F(PasswordWindowController, CloseServiceWindowRestoresThePresentationThenTearsDownThenCloses)
{
    show();
    type("secret");
    takeCalls();
    controller->closeServiceWindow();

    fakes::Calls expected{"application setPresentationOptions 0x0"};
    expected.insert(expected.end(), TORN_DOWN.begin(), TORN_DOWN.end());
    expected.emplace_back("window 1 close");
    EXPECT_EQ(takeCalls(), expected);
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(field().text(), "");
}

TEST_F(PasswordWindowController, NothingThatWasPostedBringsAClosedLockBack)
{
    show();
    controller->focus();
    controller->showServiceWindow("Calculator is locked", nullptr);
    controller->displayErrorMessage("no");
    controller->close();
    takeCalls();
    fake.dispatchQueues.runAll();

    EXPECT_TRUE(takeCalls().empty());
    EXPECT_FALSE(window().isVisible());
}

TEST_F(PasswordWindowController, WhatWasPostedDoesNothingOnceTheControllerIsGone)
{
    controller->showServiceWindow("Calculator is locked", nullptr);
    controller->focus();
    controller->displayErrorMessage("no");
    controller.reset();
    takeCalls();
    fake.dispatchQueues.runAll();

    EXPECT_TRUE(takeCalls().empty());
}

TEST_F(PasswordWindowController, AControllerThatIsDroppedLeavesNobodyListening)
{
    show();
    takeCalls();
    controller.reset();
    EXPECT_EQ(takeCalls(), TORN_DOWN);

    fake.eventMonitors.sendLocalFlagsChanged(platform::MODIFIER_FLAG_OPTION);
    deactivated(AGENT);
    fake.keyboardStatus.set(true, "de");
    EXPECT_EQ(specialKeyPresses, 0);
    EXPECT_TRUE(fake.dispatchQueues.main.empty());
}

TEST_F(PasswordWindowController, TheOwnerMayDropItFromWithinItsOwnCallback)
{
    show();
    controller->passwordEntered = [this](const std::string& typed) {
        entered.push_back(typed);
        controller.reset();
    };
    QLineEdit& inUse = field();
    inUse.setText("secret");
    QKeyEvent down(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r");
    QCoreApplication::sendEvent(&inUse, &down);

    EXPECT_EQ(entered, std::vector<std::string>{"secret"});
    EXPECT_EQ(inUse.text(), "");
}

TEST_F(PasswordWindowController, ALockThatReplacesAnotherStillHearsOfTheKeyboard)
{
    show();
    makeController(); // the new one is made before the old one goes
    fake.keyboardStatus.set(false, "fr");

    EXPECT_EQ(outlet<QLabel>("keyboardLayoutLabel").text(), "Keyboard: fr");
}

TEST_F(PasswordWindowController, AClickOnTheLayoutSwitchesToTheNextAndLeavesTheFieldItsFocus)
{
    fake.keyboardStatus.setLayouts({"us", "ru"});
    show();
    type("sec");
    const QPoint middle = place("keyboardLayoutButton").center();
    QTest::mouseClick(window().windowHandle(), Qt::LeftButton, {}, middle);

    EXPECT_EQ(fake.keyboardStatus.layoutName(), "ru");
    EXPECT_EQ(outlet<QPushButton>("keyboardLayoutButton").text(), "Keyboard: ru");
    EXPECT_EQ(window().focusWidget(), &field());
    QTest::keyClick(window().windowHandle(), 'r');
    EXPECT_EQ(field().text(), "secr");

    QTest::mouseClick(window().windowHandle(), Qt::LeftButton, {}, middle);
    EXPECT_EQ(fake.keyboardStatus.layoutName(), "us");
}

TEST_F(PasswordWindowController, OnlyItsOwnerClosesTheWindow)
{
    show();
    QCloseEvent request;
    QCoreApplication::sendEvent(&window(), &request);
    EXPECT_FALSE(request.isAccepted());
    EXPECT_FALSE(window().close());
    QApplication::closeAllWindows();
    EXPECT_TRUE(window().isVisible());

    controller->close();
    EXPECT_FALSE(window().isVisible());
}

TEST_F(PasswordWindowController, WithoutAMainScreenThereIsNoLockToShow)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    fake.screens.list.reset();

    EXPECT_DEATH(locking::PasswordWindowController(), "fatal: there is no main screen to lock");
}

TEST_F(PasswordWindowController, PreparingLeavesNoTraceOnTheDesktop)
{
    takeCalls();
    locking::PasswordWindowController::prepare();

    EXPECT_TRUE(takeCalls().empty());
}
