#include "LockWindowTest.h"
#include "qt/FormChecks.h"

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
