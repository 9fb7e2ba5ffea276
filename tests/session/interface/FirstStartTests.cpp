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
        user->waitFor(person::window(texts::GREETING));
    }

    void openPasswordWindow()
    {
        user->activate(person::button("Set Up Password", texts::GREETING));
        user->waitFor(person::window(texts::PASSWORD_WINDOW));
    }
};

TEST_F(FirstStart, GreetsAndShowsThatThereIsNoPassword)
{
    EXPECT_TRUE(user->sees(texts::NO_PASSWORD));
    EXPECT_FALSE(user->sees(texts::GATE));
    EXPECT_FALSE(user->sees(texts::CONTENT));
}

TEST_F(FirstStart, HelpLeavesTheGreetingOpen)
{
    user->activate(person::button("Help", texts::GREETING));

    user->waitFor(person::window(texts::HELP));
    EXPECT_TRUE(user->sees(person::window(texts::GREETING)));
}

TEST_F(FirstStart, QuittingFromTheGreetingEndsTheAgentWithZero)
{
    user->activate(person::button("Quit", texts::GREETING));

    EXPECT_EQ(session->process().waitForExitStatus(PATIENCE), 0);
}

TEST_F(FirstStart, SettingUpThePasswordClosesGreetingAndPopover)
{
    openPasswordWindow();

    user->waitForFocusOn(texts::NEW_PASSWORD);
    user->waitForEndOf(person::window(texts::GREETING));
    user->waitForEndOf(person::window(texts::POPOVER));
}

TEST_F(FirstStart, TheWayFromThePopoverIsTheSame)
{
    user->activate(person::button("Set Up Password", texts::POPOVER));

    user->waitFor(person::window(texts::PASSWORD_WINDOW));
    user->waitForEndOf(person::window(texts::GREETING));
    user->waitForEndOf(person::window(texts::POPOVER));
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

    EXPECT_TRUE(user->sees(person::window(texts::PASSWORD_WINDOW)));
    EXPECT_FALSE(setting("Password").has_value());
}

TEST_F(FirstStart, APasswordTypedTwiceIsKeptAndAskedForAtOnce)
{
    openPasswordWindow();

    enterNewPassword("ab", "ab");

    user->waitFor(texts::GATE);
    user->waitForEndOf(person::window(texts::PASSWORD_WINDOW));
    waitForSetting("Password", "ab");
}

TEST_F(FirstStart, ReturnConfirmsInTheSecondFieldOnly)
{
    openPasswordWindow();
    user->write("ab", texts::NEW_PASSWORD);

    user->press(desktop::KEY_RETURN);
    user->press(desktop::KEY_TAB);
    user->waitForFocusOn(texts::CONFIRMATION);
    EXPECT_FALSE(user->sees(texts::ALERT_BUTTON));
    user->type("ab");
    user->press(desktop::KEY_RETURN);

    user->waitFor(texts::GATE);
}

TEST_F(FirstStart, CancellingKeepsNothing)
{
    openPasswordWindow();
    user->write("abc", texts::NEW_PASSWORD);
    user->write("abc", texts::CONFIRMATION);

    user->activate(texts::CANCEL);

    user->waitForEndOf(person::window(texts::PASSWORD_WINDOW));
    openPopover();
    EXPECT_TRUE(user->sees(texts::NO_PASSWORD));
    EXPECT_FALSE(setting("Password").has_value());
}

} // namespace agent
