// From a home without anything to a first password.

#include "desktop/ForeignClient.h"
#include "session/interface/InterfaceTest.h"

namespace agent {

class FirstStart : public InterfaceTest
{
protected:
    static constexpr auto ERROR = "There was an error..";

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

    /// The window manager keeps keyboard and pointer while it moves a window.
    void waitForEndOfMove()
    {
        desktop::XConnection other(desk().server().displayName());
        user->waitUntil("nobody holds the pointer", [&] { return desktop::grabInput(other); });
        desktop::releaseInput(other);
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

TEST_F(FirstStart, TheKeyOfTheGreetingsQuitButtonDoesTheSame)
{
    turnTo(screens::GREETING);
    user->press('q', {desktop::KEY_ALT});

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

TEST_F(FirstStart, AWindowIsMovedByItsGroundAndReturnThenSetsUpThePassword)
{
    turnTo(screens::GREETING);
    // The toolkit does not hear of the places in between.
    const auto place = [this] {
        return desk().windows().placeOf(desk().windows().ofTitle(screens::GREETING));
    };
    const desktop::Rectangle before = place();
    auto x = static_cast<std::int16_t>(before.x + 12);
    const auto y = static_cast<std::int16_t>(before.y + 12);
    desk().input().movePointer(x, y);
    desk().input().holdButton();
    user->waitUntil("the window follows the pointer", [&] {
        desk().input().movePointer(++x, y);
        return place().x > before.x;
    });
    desk().input().releaseButton();
    waitForEndOfMove();

    user->press(desktop::KEY_RETURN);

    user->waitForFocusOn(screens::NEW_PASSWORD);
}

TEST_F(FirstStart, EveryPasswordThatCannotBeIsRefusedWithItsReason)
{
    openPasswordWindow();

    enterNewPassword("", "");
    answerAlert(ERROR, "The password cannot be empty");
    enterNewPassword("a", "a");
    answerAlert(ERROR, "The password cannot be smaller than 3 characters");
    enterNewPassword("abc", "abd");
    answerAlert(ERROR, "The passwords do not match");

    EXPECT_TRUE(user->sees(person::window(screens::PASSWORD_WINDOW)));
    EXPECT_FALSE(setting("Password").has_value());
}

TEST_F(FirstStart, ARefusalIsPutRightWithTheKeyboardWhereTheCaretWas)
{
    openPasswordWindow();
    enterNewPassword(PASSWORD, "something else");
    user->waitForFocusOn(screens::ALERT_BUTTON);
    EXPECT_FALSE(setting("Password").has_value());

    user->press(desktop::KEY_RETURN);
    user->waitForFocusOn(screens::CONFIRMATION);
    session->enter(PASSWORD);

    user->waitFor(screens::GATE);
    waitForSetting("Password", PASSWORD);
}

TEST_F(FirstStart, APasswordTypedTwiceIsKeptAndAskedForAtOnce)
{
    openPasswordWindow();
    EXPECT_EQ(session->countOf("Monitoring services started"), 0U);

    enterNewPassword("ab", "ab");

    user->waitFor(screens::GATE);
    user->waitForEndOf(person::window(screens::PASSWORD_WINDOW));
    waitForSetting("Password", "ab");
    EXPECT_TRUE(session->waitForLine("Monitoring services started"));
}

TEST_F(FirstStart, ThePopoverThatWasOpenedMeanwhileAsksForThePasswordToo)
{
    openPasswordWindow();
    openPopover();
    user->waitFor(screens::NO_PASSWORD);
    turnTo(screens::PASSWORD_WINDOW);

    enterNewPassword("abc", "abc");

    user->waitForFocusOn(screens::GATE);
    EXPECT_FALSE(user->sees(screens::NO_PASSWORD));
    enterAtGate("abc");
    user->waitFor(screens::CONTENT);
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

TEST_F(FirstStart, EscapeCancelsAsWell)
{
    openPasswordWindow();
    user->write("abc", screens::NEW_PASSWORD);

    user->press(desktop::KEY_ESCAPE);

    user->waitForEndOf(person::window(screens::PASSWORD_WINDOW));
    EXPECT_FALSE(setting("Password").has_value());
    EXPECT_EQ(session->agents().size(), 1U);
}

} // namespace agent
