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
    tabTo(person::button("Set Up Password", screens::POPOVER));
    user->press(desktop::KEY_RETURN);
    user->waitForFocusOn(screens::NEW_PASSWORD);
    user->type(PASSWORD);
    user->press(desktop::KEY_TAB);
    user->type(PASSWORD);
    user->press(desktop::KEY_RETURN);

    user->waitForFocusOn(screens::GATE);
    user->type(PASSWORD);
    user->press(desktop::KEY_RETURN);
    user->waitFor(screens::CONTENT);
    tabTo(screens::ADD);
    user->press(desktop::KEY_RETURN);
    user->waitFor(person::row("Garden", screens::PICKER));
    tabTo(screens::FILTER);
    user->type("gard");
    user->waitUntil("one is left", [this] {
        return user->rows() == std::vector<std::string>{"Garden"};
    });
    tabTo(screens::OFFERED);
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
    tabTo(screens::OPTIONS);
    user->press(desktop::KEY_RETURN);
    user->goTo(screens::QUIT);

    user->press('h');

    user->waitForFocusOn(screens::HELP_PAGE);
    user->press(desktop::KEY_ESCAPE);
    user->waitForEndOf(person::window(screens::HELP));
}

} // namespace agent
