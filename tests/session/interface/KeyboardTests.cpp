// The whole way with nothing but the keyboard.

#include "session/interface/InterfaceTest.h"

namespace agent {

class Keyboard : public InterfaceTest
{
protected:
    /// Goes on with Tab until the control has the keyboard.
    void tabTo(const person::Control& control)
    {
        constexpr int MOST = 20;
        for (int tabs = 0; tabs < MOST; ++tabs) {
            if (user->hasFocus(control)) {
                return;
            }
            const auto before = user->focused();
            user->press(desktop::KEY_TAB);
            user->waitUntil("Tab leads on", [&] {
                const auto now = user->focused();
                return now && now != before;
            });
        }
        FAIL() << control.name << " is not reached by Tab\n" << user->report();
    }
};

TEST_F(Keyboard, LeadsFromTheFirstStartToAProtectedApplication)
{
    addApplication("garden", "Garden");
    startAgent();
    tabTo(person::button("Set Up Password", texts::POPOVER));
    user->press(desktop::KEY_RETURN);
    user->waitForFocusOn(texts::NEW_PASSWORD);
    user->type(PASSWORD);
    user->press(desktop::KEY_TAB);
    user->type(PASSWORD);
    user->press(desktop::KEY_RETURN);

    user->waitForFocusOn(texts::GATE);
    user->type(PASSWORD);
    user->press(desktop::KEY_RETURN);
    user->waitFor(texts::CONTENT);
    tabTo(texts::ADD);
    user->press(desktop::KEY_RETURN);
    user->waitFor(person::row("Garden", texts::PICKER));
    tabTo(texts::FILTER);
    user->type("gard");
    user->waitUntil("one is left", [this] {
        return user->rows() == std::vector<std::string>{"Garden"};
    });
    tabTo(texts::OFFERED);
    user->press(desktop::KEY_RETURN);
    waitForSetting("Applications", "garden;");

    const desktop::ChildProcess garden = startApplication("garden");
    EXPECT_TRUE(session->waitForCover());
    session->enter(PASSWORD);
    EXPECT_TRUE(session->waitForEndOfCover());
}

TEST_F(Keyboard, OpensTheMenuAndItsEntries)
{
    startWithPassword();
    unlock();
    tabTo(texts::OPTIONS);
    user->press(desktop::KEY_RETURN);
    user->goTo(texts::QUIT);

    user->press('h');

    user->waitForFocusOn(texts::HELP_PAGE);
    user->press(desktop::KEY_ESCAPE);
    user->waitForEndOf(person::window(texts::HELP));
}

} // namespace agent
