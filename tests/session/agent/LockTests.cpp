#include "desktop/ForeignClient.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/Typist.h"
#include "session/agent/AgentTest.h"

#include <algorithm>
#include <csignal>

#include <sys/wait.h>

namespace agent {

class Lock : public AgentTest
{
protected:
    /// Clicks on the first menu of the window; the menu's own window, or 0.
    xcb_window_t clickMenuOf(xcb_window_t window) const
    {
        desktop::WindowList& windows = session->desk.windows();
        const std::vector<xcb_window_t> before = windows.viewableTopLevels();
        const desktop::Rectangle place = windows.placeOf(window);
        session->desk.input().click(
            static_cast<std::int16_t>(place.x + 16), static_cast<std::int16_t>(place.y + 12)
        );
        xcb_window_t menu = 0;
        desktop::waitUntil(
            [&] {
                for (const xcb_window_t each : windows.viewableTopLevels()) {
                    if (std::find(before.begin(), before.end(), each) == before.end()) {
                        menu = each;
                    }
                }
                return menu != 0;
            },
            PATIENCE
        );
        return menu;
    }

    /// The agent has done all that its own start takes.
    bool hasComeToRest() const { return session->waitForLine("Did start: OlvoHelper"); }

    /// Somebody types on while a terminal starts: it gets what is typed after the lock alone.
    void typeWhileATerminalStarts() const
    {
        ASSERT_TRUE(hasComeToRest());
        desktop::Typist typist(session->desk.server().displayName(), 'x');
        ASSERT_TRUE(typist.waitForMore(1));

        Recorder xterm(session->desk);
        ASSERT_TRUE(locks() && xterm.waitUntilItListens() && typist.waitForMore(50));
        typist.stop();

        ASSERT_TRUE(opensWithThePassword() && getsFocus(xterm.process()));
        session->desk.input().type("after");
        EXPECT_TRUE(xterm.waitFor("after")) << xterm.received();
    }

    /// Whether nobody else can have keyboard and pointer, within reasonable time.
    bool inputIsCaptured() const
    {
        desktop::XConnection other(session->desk.server().displayName());
        return desktop::waitUntil(
            [&] {
                const bool free = desktop::grabInput(other);
                desktop::releaseInput(other);
                return !free;
            },
            PATIENCE
        );
    }
};

TEST_F(Lock, CoversEveryScreenUntilTheRightPasswordIsEntered)
{
    watch({TERMINAL});
    Recorder xterm(session->desk);

    ASSERT_TRUE(session->waitForCover());
    session->enter("wrong");
    EXPECT_TRUE(coverStaysFor(500ms));
    EXPECT_TRUE(opensWithThePassword());
    EXPECT_TRUE(getsFocus(xterm.process()));
}

TEST_F(Lock, LeavesOtherApplicationsAlone)
{
    watch({"org.xfce.mousepad"});
    Recorder xterm(session->desk);

    ASSERT_TRUE(session->waitForLine("Did start: XTerm"));
    EXPECT_TRUE(getsFocus(xterm.process()));
    EXPECT_TRUE(isUncovered(session->desk));
}

TEST_F(Lock, GivesATerminalNoneOfTheKeysTypedFromItsStart)
{
    watch({TERMINAL});
    typeWhileATerminalStarts();
}

TEST_F(Lock, GivesATerminalNoneOfTheKeysTypedFromItsStartOverAnOpenMenu)
{
    watch({TERMINAL});
    desktop::ChildProcess mousepad = session->desk.start({"mousepad"});
    ASSERT_TRUE(session->waitForLine("Did start: Mousepad") && getsFocus(mousepad));
    const std::size_t before = session->desk.windows().viewableTopLevels().size();
    session->desk.input().press(desktop::KEY_F10);
    ASSERT_TRUE(desktop::waitUntil(
        [&] { return session->desk.windows().viewableTopLevels().size() > before; }, PATIENCE
    ));
    typeWhileATerminalStarts();
}

TEST_F(Lock, TakesTheKeyboardFromAMenuThatAClickOpened)
{
    watch({TERMINAL});
    const auto file = session->desk.home() / "letter.txt";
    desktop::writeFile(file, "Dear reader\n");
    desktop::ChildProcess mousepad = session->desk.start({"mousepad", file});
    ASSERT_TRUE(session->waitForLine("Did start: Mousepad") && getsFocus(mousepad));
    desktop::WindowList& windows = session->desk.windows();
    const xcb_window_t editor = windows.active();
    ASSERT_TRUE(desktop::waitUntil(
        [&] { return windows.titleOf(editor).find("letter.txt") != std::string::npos; }, PATIENCE
    ));
    const std::string title = windows.titleOf(editor); // bears a mark once something is typed
    const xcb_window_t menu = clickMenuOf(editor);
    ASSERT_NE(menu, 0U);

    Recorder xterm(session->desk);
    ASSERT_TRUE(locks() && xterm.waitUntilItListens());
    ASSERT_TRUE(desktop::waitUntil([&] { return !windows.isViewable(menu); }, PATIENCE));
    ASSERT_TRUE(inputIsCaptured());

    EXPECT_TRUE(opensWithThePassword());
    EXPECT_TRUE(getsFocus(xterm.process()));
    EXPECT_EQ(xterm.received(), "");
    EXPECT_EQ(windows.titleOf(editor), title);
}

TEST_F(Lock, GivesAnEditorNoneOfTheKeysTypedFromItsStart)
{
    watch({"org.xfce.mousepad"});
    const auto file = session->desk.home() / "letter.txt";
    desktop::writeFile(file, "Dear reader\n");
    desktop::Typist typist(session->desk.server().displayName(), 'x');
    desktop::ChildProcess mousepad = session->desk.start({"mousepad", file});
    ASSERT_TRUE(session->waitForLine("Did start: Mousepad") && typist.waitForMore(50));
    typist.stop();
    ASSERT_TRUE(opensWithThePassword() && getsFocus(mousepad));
    session->desk.input().type("!");
    session->desk.input().press('s', {desktop::KEY_CONTROL});

    desktop::waitUntil([&] { return desktop::readFile(file) != "Dear reader\n"; }, PATIENCE);
    EXPECT_EQ(desktop::readFile(file), "!Dear reader\n");
}

TEST_F(Lock, CoversACalculator)
{
    watch({"org.gnome.Calculator"});
    desktop::ChildProcess calculator = session->desk.start({"gnome-calculator"});

    ASSERT_TRUE(session->waitForCover());
    ASSERT_TRUE(session->waitForLine("Did start: Calculator"));
    EXPECT_TRUE(coverStaysFor(500ms));
    EXPECT_TRUE(opensWithThePassword());
    EXPECT_TRUE(getsFocus(calculator));
}

TEST_F(Lock, IsLiftedWhenTheApplicationEnds)
{
    watch({TERMINAL});
    Recorder xterm(session->desk);
    ASSERT_TRUE(session->waitForCover());

    xterm.process().signal(SIGKILL);

    EXPECT_TRUE(session->waitForLine("Terminated: XTerm"));
    EXPECT_TRUE(session->waitForEndOfCover());
}

TEST_F(Lock, ReachesNobodyByTheShortcutsOfTheWindowManager)
{
    watch({TERMINAL});
    Recorder xterm(session->desk);
    ASSERT_TRUE(locks());

    session->desk.input().press(desktop::KEY_F4, {desktop::KEY_ALT});
    session->desk.input().press(desktop::KEY_TAB, {desktop::KEY_ALT});
    session->desk.input().press(desktop::KEY_ESCAPE, {desktop::KEY_CONTROL, desktop::KEY_ALT});
    session->desk.input().click(1900, 300, 3);

    EXPECT_TRUE(coverStaysFor(500ms));
    EXPECT_TRUE(xterm.process().isRunning());
    EXPECT_TRUE(opensWithThePassword());
}

} // namespace agent
