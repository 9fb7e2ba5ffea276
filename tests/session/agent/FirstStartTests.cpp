// From an empty home to a password, as a person with a keyboard goes.

#include "desktop/ForeignClient.h"
#include "session/agent/InterfaceTest.h"

namespace agent {

class FirstStart : public InterfaceTest
{
protected:
    void SetUp() override
    {
        open();
        session->startAgent({});
    }

    /// Whether everything that the start shows is there, and the greeting has the keyboard.
    bool isGreeted() const { return getsKeys(TARVEL) && turnTo(GREETING); }

    /// Whether the greeting's default button leads to the password window.
    bool goToThePasswordWindow() const
    {
        if (!isGreeted()) {
            return false;
        }
        press(desktop::KEY_RETURN);
        return getsKeys(PREFERENCES);
    }
};

TEST_F(FirstStart, LeadsFromTheGreetingToAPasswordAndToThePopoverThatAsksForIt)
{
    ASSERT_TRUE(goToThePasswordWindow());
    EXPECT_TRUE(goes(GREETING));
    EXPECT_TRUE(goes(TARVEL)); // the popover makes room
    EXPECT_EQ(session->countOf("Monitoring services started"), 0U);

    choosePassword(PASSWORD, PASSWORD);
    EXPECT_TRUE(goes(PREFERENCES));
    ASSERT_TRUE(getsKeys(TARVEL));
    EXPECT_EQ(kept("Password"), PASSWORD);
    EXPECT_TRUE(session->waitForLine("Monitoring services started"));

    EXPECT_FALSE(showsTheList());
    session->enter("wrong");
    EXPECT_TRUE(desktop::holdsFor([this] { return !showsTheList(); }, 500ms));
    session->enter(PASSWORD);
    EXPECT_TRUE(desktop::waitUntil([this] { return showsTheList(); }, PATIENCE));
}

TEST_F(FirstStart, SaysWhatIsWrongWithAPasswordAndTakesTheNextOne)
{
    ASSERT_TRUE(goToThePasswordWindow());
    choosePassword(PASSWORD, "something else");
    ASSERT_TRUE(getsKeys(TARVEL)); // the alert
    EXPECT_NE(session->desk.windows().ofTitle(PREFERENCES), 0U);
    EXPECT_EQ(kept("Password"), std::nullopt);

    press(desktop::KEY_RETURN);
    EXPECT_TRUE(goes(TARVEL));
    ASSERT_TRUE(getsKeys(PREFERENCES));
    session->enter(PASSWORD); // in the confirmation, where the caret was
    EXPECT_TRUE(goes(PREFERENCES));
    EXPECT_TRUE(getsKeys(TARVEL));
    EXPECT_EQ(kept("Password"), PASSWORD);
}

TEST_F(FirstStart, AWindowIsMovedByItsGround)
{
    ASSERT_TRUE(isGreeted());
    const auto place = [this] {
        return session->desk.windows().placeOf(session->desk.windows().ofTitle(GREETING));
    };
    const desktop::Rectangle before = place();
    desktop::Input& hand = session->desk.input();
    auto x = static_cast<std::int16_t>(before.x + 12);
    const auto y = static_cast<std::int16_t>(before.y + 12);
    hand.movePointer(x, y);
    hand.holdButton();
    EXPECT_TRUE(desktop::waitUntil(
        [&] {
            hand.movePointer(++x, y);
            return place().x > before.x;
        },
        PATIENCE
    ));
    hand.releaseButton();
    // The window manager keeps keyboard and pointer while it moves a window.
    desktop::XConnection other(session->desk.server().displayName());
    ASSERT_TRUE(desktop::waitUntil([&] { return desktop::grabInput(other); }, PATIENCE));
    desktop::releaseInput(other);
    press(desktop::KEY_RETURN);
    EXPECT_TRUE(getsKeys(PREFERENCES));
}

TEST_F(FirstStart, CancellingLeavesEverythingAsItWas)
{
    ASSERT_TRUE(goToThePasswordWindow());
    session->desk.input().type(PASSWORD);
    press(desktop::KEY_ESCAPE);

    EXPECT_TRUE(goes(PREFERENCES));
    EXPECT_EQ(kept("Password"), std::nullopt);
    EXPECT_EQ(session->agents().size(), 1U);
}

TEST_F(FirstStart, QuittingFromTheGreetingEndsTheAgentWithZero)
{
    ASSERT_TRUE(isGreeted());
    press('q', {desktop::KEY_ALT});

    EXPECT_EQ(session->process().waitForExitStatus(PATIENCE), 0);
}

} // namespace agent
