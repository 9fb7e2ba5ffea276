#include "PopoverTest.h"
#include "ui/popover/RequestPasswordViewController.h"

#include <QAccessible>
#include <QSequentialAnimationGroup>
#include <QVBoxLayout>

namespace {

/// The page alone, in a window.
class RequestPasswordPage : public PopoverTest
{
protected:
    RequestPasswordPage()
    {
        controller.onPasswordEntered = [this](const std::string& typed) {
            entered.push_back(typed);
        };
        controller.onHelpRequest = [this] { ++helpRequests; };
        auto* const layout = new QVBoxLayout(&holder);
        layout->addWidget(&controller.view());
        holder.resize(400, 500);
        holder.show();
        holder.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&holder));
        field().setFocus();
    }

    ~RequestPasswordPage() override { controller.view().setParent(nullptr); }

    [[nodiscard]] ui::TextField& field() const { return *controller.passwordTextFieldOutlet; }

    [[nodiscard]] QPushButton& button(const char* name) const
    {
        return *holder.findChild<QPushButton*>(name);
    }

    [[nodiscard]] QSequentialAnimationGroup& shake() const
    {
        return *controller.centralViewOutlet->findChild<QSequentialAnimationGroup*>("position");
    }

    int offsetAt(int milliseconds, int resting)
    {
        shake().setCurrentTime(milliseconds);
        return controller.centralViewOutlet->y() - resting;
    }

    QWidget holder;
    ui::RequestPasswordViewController controller;
    std::vector<std::string> entered;
    int helpRequests = 0;
};

using Texts = std::vector<std::string>;

} // namespace

TEST_F(RequestPasswordPage, TheFieldIsMasked)
{
    EXPECT_EQ(field().echoMode(), QLineEdit::Password);
}

TEST_F(RequestPasswordPage, TheEnterButtonReportsTheText)
{
    QTest::keyClicks(&field(), "abc");
    button("passwordEnterButton").click();
    EXPECT_EQ(entered, Texts{"abc"});
    EXPECT_EQ(field().text(), "abc");
}

TEST_F(RequestPasswordPage, ReturnReportsTheTextAlsoAnEmptyOne)
{
    QTest::keyClick(&field(), Qt::Key_Return);
    QTest::keyClicks(&field(), " a b ");
    QTest::keyClick(&field(), Qt::Key_Enter);
    EXPECT_EQ(entered, (Texts{"", " a b "}));
}

TEST_F(RequestPasswordPage, LeavingTheFieldReportsNothing)
{
    QTest::keyClicks(&field(), "abc");
    QTest::keyClick(&field(), Qt::Key_Tab);
    EXPECT_TRUE(button("passwordEnterButton").hasFocus());
    field().setFocus();
    QTest::keyClick(&field(), Qt::Key_Backtab);
    field().setFocus(Qt::MouseFocusReason);
    button("helpButton").setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(entered, Texts());
}

TEST_F(RequestPasswordPage, TheHelpButtonReportsAndNothingElse)
{
    button("helpButton").click();
    EXPECT_EQ(helpRequests, 1);
    EXPECT_EQ(entered, Texts());
}

TEST_F(RequestPasswordPage, WithoutListenersEverythingIsDropped)
{
    controller.onPasswordEntered = nullptr;
    controller.onHelpRequest = nullptr;
    QTest::keyClick(&field(), Qt::Key_Return);
    controller.passwordEnterButtonClick();
    controller.helpButtonClick();
    EXPECT_EQ(entered, Texts());
}

TEST_F(RequestPasswordPage, GetsTheCaretOnTheMainQueueWhenItAppears)
{
    button("helpButton").setFocus();
    controller.viewWillAppear();
    EXPECT_FALSE(field().hasFocus());
    EXPECT_EQ(fake.dispatchQueues.main.size(), 1U);
    fake.dispatchQueues.runMainTurn();
    EXPECT_TRUE(field().hasFocus());
}

TEST_F(RequestPasswordPage, WhatIsTypedAfterAWrongPasswordReplacesIt)
{
    QTest::keyClicks(&field(), "wrong");
    button("passwordEnterButton").setFocus();
    button("passwordEnterButton").click();
    controller.wrongPassword();
    EXPECT_TRUE(field().hasFocus());
    EXPECT_EQ(field().text(), "wrong");
    QTest::keyClicks(&field(), "right");
    EXPECT_EQ(field().text(), "right");
}

TEST_F(RequestPasswordPage, IsEmptiedWhenItDisappears)
{
    QTest::keyClicks(&field(), "abc");
    controller.wrongPassword();
    controller.viewDidDisappear();
    EXPECT_EQ(field().text(), "");
    field().undo();
    EXPECT_EQ(field().text(), "");
    EXPECT_EQ(field().accessibleDescription(), "");
}

TEST_F(RequestPasswordPage, ShakesUpByTwentyAndBackTwiceATenthOfASecondEachWay)
{
    const int resting = controller.centralViewOutlet->y();
    controller.wrongPassword();
    EXPECT_EQ(shake().totalDuration(), 400);
    std::vector<int> offsets;
    for (const int time : {0, 100, 200, 300, 400}) {
        offsets.push_back(offsetAt(time, resting));
    }
    EXPECT_EQ(offsets, (std::vector{0, -20, 0, -20, 0}));
    EXPECT_EQ(shake().state(), QAbstractAnimation::Stopped);
}

TEST_F(RequestPasswordPage, TwoWrongPasswordsGiveOneShakeThatStartsAnew)
{
    const int resting = controller.centralViewOutlet->y();
    controller.wrongPassword();
    EXPECT_EQ(offsetAt(100, resting), -20);
    controller.wrongPassword();
    EXPECT_EQ(shake().currentTime(), 0);
    EXPECT_EQ(controller.centralViewOutlet->y(), resting);
    EXPECT_EQ(offsetAt(100, resting), -20);
    EXPECT_EQ(offsetAt(400, resting), 0);
    EXPECT_EQ(
        controller.centralViewOutlet->findChildren<QSequentialAnimationGroup*>("position").size(), 1
    );
}

TEST_F(RequestPasswordPage, AWrongPasswordKeepsTheTextAndShowsNone)
{
    QTest::keyClicks(&field(), "abc");
    std::vector<QString> before;
    for (const QLabel* label : holder.findChildren<QLabel*>()) {
        before.push_back(label->text());
    }
    controller.wrongPassword();
    EXPECT_EQ(field().text(), "abc");
    std::vector<QString> after;
    for (const QLabel* label : holder.findChildren<QLabel*>()) {
        after.push_back(label->text());
    }
    EXPECT_EQ(before, after);
}

TEST_F(RequestPasswordPage, AWrongPasswordIsToldToAssistiveToolsButNotThePassword)
{
    QTest::keyClicks(&field(), "abc");
    controller.wrongPassword();
    QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(&field());
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->text(QAccessible::Name), "Password");
    EXPECT_EQ(spoken->text(QAccessible::Description), "Wrong password");
    EXPECT_FALSE(spoken->text(QAccessible::Value).contains("abc"));
}
