// From a home without anything to a first password.

#include "session/interface/InterfaceTest.h"

namespace agent {

class FirstStart : public InterfaceTest
{
protected:
    void SetUp() override
    {
        InterfaceTest::SetUp();
        startAgent();
        user->waitFor(person::window(screens::GREETING));
    }

    void openPasswordWindow()
    {
        user->activate(person::button("Set Up Password", screens::GREETING));
        user->waitFor(person::window(screens::PASSWORD_WINDOW));
    }
};

TEST_F(FirstStart, GreetsAndShowsThatThereIsNoPassword)
{
    EXPECT_TRUE(user->sees(screens::NO_PASSWORD));
    EXPECT_FALSE(user->sees(screens::GATE));
    EXPECT_FALSE(user->sees(screens::CONTENT));
}

TEST_F(FirstStart, HelpLeavesTheGreetingOpen)
{
    user->activate(person::button("Help", screens::GREETING));

    user->waitFor(person::window(screens::HELP));
    EXPECT_TRUE(user->sees(person::window(screens::GREETING)));
}

TEST_F(FirstStart, QuittingFromTheGreetingEndsTheAgentWithZero)
{
    user->activate(person::button("Quit", screens::GREETING));

    EXPECT_EQ(session->process().waitForExitStatus(PATIENCE), 0);
}

TEST_F(FirstStart, SettingUpThePasswordClosesGreetingAndPopover)
{
    openPasswordWindow();

    user->waitForFocusOn(screens::NEW_PASSWORD);
    user->waitForEndOf(person::window(screens::GREETING));
    user->waitForEndOf(person::window(screens::POPOVER));
}

TEST_F(FirstStart, TheWayFromThePopoverIsTheSame)
{
    user->activate(person::button("Set Up Password", screens::POPOVER));

    user->waitFor(person::window(screens::PASSWORD_WINDOW));
    user->waitForEndOf(person::window(screens::GREETING));
    user->waitForEndOf(person::window(screens::POPOVER));
}

TEST_F(FirstStart, EveryPasswordThatCannotBeIsRefusedWithItsReason)
{
    constexpr auto TITLE = "There was an error..";
    openPasswordWindow();

    enterNewPassword("", "");
    answerAlert(TITLE, "The password cannot be empty");
    enterNewPassword("a", "a");
    answerAlert(TITLE, "The password cannot be smaller than 3 characters");
    enterNewPassword("abc", "abd");
    answerAlert(TITLE, "The passwords do not match");

    EXPECT_TRUE(user->sees(person::window(screens::PASSWORD_WINDOW)));
    EXPECT_FALSE(setting("Password").has_value());
}

TEST_F(FirstStart, APasswordTypedTwiceIsKeptAndAskedForAtOnce)
{
    openPasswordWindow();

    enterNewPassword("ab", "ab");

    user->waitFor(screens::GATE);
    user->waitForEndOf(person::window(screens::PASSWORD_WINDOW));
    waitForSetting("Password", "ab");
}

TEST_F(FirstStart, ReturnConfirmsInTheSecondFieldOnly)
{
    openPasswordWindow();
    user->write("ab", screens::NEW_PASSWORD);

    user->press(desktop::KEY_RETURN);
    user->press(desktop::KEY_TAB);
    user->waitForFocusOn(screens::CONFIRMATION);
    EXPECT_FALSE(user->sees(screens::ALERT_BUTTON));
    user->type("ab");
    user->press(desktop::KEY_RETURN);

    user->waitFor(screens::GATE);
}

TEST_F(FirstStart, CancellingKeepsNothing)
{
    openPasswordWindow();
    user->write("abc", screens::NEW_PASSWORD);
    user->write("abc", screens::CONFIRMATION);

    user->activate(screens::CANCEL);

    user->waitForEndOf(person::window(screens::PASSWORD_WINDOW));
    openPopover();
    EXPECT_TRUE(user->sees(screens::NO_PASSWORD));
    EXPECT_FALSE(setting("Password").has_value());
}

} // namespace agent
