#include "LockWindowTest.h"
#include "qt/Contrast.h"
#include "qt/FormChecks.h"

#include <QAccessible>

#include <algorithm>

namespace {

using PasswordWindowForm = LockWindowTest;

constexpr auto FORM = SOURCES "/locking/window/PasswordWindow.ui";

} // namespace

TEST_F(PasswordWindowForm, EveryWidgetIsNamedAndAccessible)
{
    EXPECT_EQ(support::troublesOfForm(FORM), std::vector<std::string>());
}

TEST_F(PasswordWindowForm, EveryControlThatTakesTheFocusIsLabelledAndReachedByTab)
{
    show();
    EXPECT_EQ(support::troublesOfWindow(window()), std::vector<std::string>());
}

TEST_F(PasswordWindowForm, HasTheFiveOutlets)
{
    for (const char* name :
         {"appIconOutlet",
          "appNameLabelOutlet",
          "errorMessageLabelOutlet",
          "passwordFieldOutlet",
          "centralViewOutlet"}) {
        EXPECT_NE(window().findChild<QWidget*>(name), nullptr) << name;
    }
}

TEST_F(PasswordWindowForm, OnlyTheFieldTakesTheFocus)
{
    std::vector<std::string> focusable;
    for (const QWidget* widget : window().findChildren<QWidget*>()) {
        if (widget->focusPolicy() != Qt::NoFocus) {
            focusable.push_back(widget->objectName().toStdString());
        }
    }
    EXPECT_EQ(window().focusPolicy(), Qt::NoFocus);
    EXPECT_EQ(focusable, std::vector<std::string>{"passwordFieldOutlet"});
}

TEST_F(PasswordWindowForm, TheMessageIsTheAccessibleNameOfItsLabel)
{
    show("Calculator is locked");
    EXPECT_EQ(outlet("appNameLabelOutlet").accessibleName(), "Calculator is locked");
}

TEST_F(PasswordWindowForm, AWrongPasswordIsToldToAssistiveToolsButNotThePassword)
{
    show();
    field().setText("abc");
    controller->displayErrorMessage("");
    fake.dispatchQueues.runAll();
    QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(&field());
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->text(QAccessible::Name), "Password");
    EXPECT_EQ(spoken->text(QAccessible::Description), "Wrong password");
    EXPECT_FALSE(spoken->text(QAccessible::Value).contains("abc"));

    fake.keyboardStatus.set(true, "de");
    controller->displayErrorMessage("");
    fake.dispatchQueues.runAll();
    EXPECT_EQ(spoken->text(QAccessible::Description), "Wrong password. Caps Lock is on");
}

TEST_F(PasswordWindowForm, TheEmptyFieldSaysLegiblyWhatBelongsThere)
{
    show();
    EXPECT_EQ(field().placeholderText(), "Password");
    const QImage drawn = window().grab(place("passwordFieldOutlet")).toImage();
    const QColor ground = drawn.pixelColor(drawn.width() - 20, drawn.height() / 2);
    double best = 0.0;
    for (int x = drawn.height(); x < drawn.width(); ++x) { // right of the caret
        for (int y = 0; y < drawn.height(); ++y) {
            best = std::max(best, support::contrast(drawn.pixelColor(x, y), ground));
        }
    }
    EXPECT_GE(best, 4.5);
}
