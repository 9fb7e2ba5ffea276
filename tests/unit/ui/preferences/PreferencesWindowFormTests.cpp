// What a user sees of the password window, and how the keyboard goes through it.
#include "PreferencesWindowTest.h"

#include <QAccessible>
#include <QLabel>

namespace {

using PreferencesWindowForm = PreferencesWindowTest;
using Names = std::vector<std::string>;

} // namespace

TEST_F(PreferencesWindowForm, TheLineHasItsColour)
{
    present();
    const QFrame& line = *controller().lineViewOutlet;
    const QPoint middle = line.mapTo(&window(), line.rect().center());
    EXPECT_EQ(line.height(), 1);
    EXPECT_EQ(window().grab().toImage().pixelColor(middle), QColor(99, 102, 108));
}

TEST_F(PreferencesWindowForm, StaysAboveOrdinaryWindows)
{
    present();
    EXPECT_TRUE(window().windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(PreferencesWindowForm, TheFieldsAreMaskedAndNeverSpoken)
{
    present();
    fill("secret", "secret");
    for (const ui::TextField* field : {&first(), &second()}) {
        EXPECT_EQ(field->echoMode(), QLineEdit::Password);
        EXPECT_FALSE(field->accessibleName().isEmpty());
        EXPECT_NE(field->displayText(), "secret");
        EXPECT_EQ(field->inputMethodQuery(Qt::ImSurroundingText).toString(), "");
    }
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&first());
    ASSERT_NE(spoken, nullptr);
    EXPECT_FALSE(spoken->text(QAccessible::Value).contains("secret"));
    EXPECT_FALSE(spoken->textInterface()->text(0, 6).contains("secret"));
}

TEST_F(PreferencesWindowForm, EachFieldHasItsLabel)
{
    controller().showServiceWindow();
    EXPECT_EQ(window().findChild<QLabel*>("passwordLabel")->buddy(), &first());
    EXPECT_EQ(window().findChild<QLabel*>("confirmationLabel")->buddy(), &second());
}

TEST_F(PreferencesWindowForm, TabFollowsTheEyeAndReturnPressesTheButtonThatHasTheKeyboard)
{
    present();
    std::vector<std::string> order;
    for (int step = 0; step < 4; ++step) {
        order.push_back(QApplication::focusWidget()->objectName().toStdString());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(
        order,
        (Names{
            "passwordTextFieldOutlet",
            "confirmPasswordTextFieldOutlet",
            "cancelButton",
            "confirmButton"})
    );
    button("cancelButton").setFocus();
    EXPECT_TRUE(button("confirmButton").isDefault());
    EXPECT_FALSE(button("cancelButton").isDefault());
    QTest::keyClick(&button("cancelButton"), Qt::Key_Return);
    EXPECT_FALSE(window().isVisible());
}

TEST_F(PreferencesWindowForm, IsMirroredWhereTextRunsFromRightToLeft)
{
    present();
    EXPECT_LT(button("cancelButton").x(), button("confirmButton").x());
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QCoreApplication::processEvents();
    EXPECT_GT(button("cancelButton").x(), button("confirmButton").x());
}
