// The agent's own windows beside its lock: none of them keeps anything from it.

#include "desktop/TemporaryFolder.h"
#include "session/agent/InterfaceTest.h"

namespace agent {

class OwnWindows : public InterfaceTest
{
protected:
    void SetUp() override
    {
        open();
        session->protect({TERMINAL});
    }

    bool start(const std::vector<std::string>& arguments) const
    {
        session->startAgent(arguments);
        return session->waitForLine("Monitoring services started");
    }

    /// Whether the popover opens to the password.
    bool unlockPopover() const
    {
        if (!getsKeys(TARVEL)) {
            return false;
        }
        session->enter(PASSWORD);
        return desktop::waitUntil([this] { return showsTheList(); }, PATIENCE);
    }

    /// On the last button of the strip above the list.
    void clickOptions() const
    {
        constexpr int FROM_THE_EDGES = 22;
        const desktop::Rectangle place =
            session->desk.windows().placeOf(session->desk.windows().ofTitle(TARVEL));
        session->desk.input().click(
            static_cast<std::int16_t>(place.x + place.width - FROM_THE_EDGES),
            static_cast<std::int16_t>(place.y + FROM_THE_EDGES)
        );
    }

    /// A terminal that is started now is locked, and to be had with the password.
    void lockAndUnlock() const
    {
        Recorder xterm(session->desk);
        ASSERT_TRUE(locks());
        session->enter(PASSWORD); // once: an alert would end at the first Return
        EXPECT_TRUE(getsFocus(xterm.process()));
        EXPECT_TRUE(xterm.waitUntilItListens());
        EXPECT_EQ(xterm.received(), "");
    }
};

/// Windows of the agent that come while it locks.
class OwnWindowsDuringALock : public OwnWindows
{
protected:
    /// Whether the popover's window is there and the keyboard is the lock's all the same.
    bool popoverLeavesTheFocus() const
    {
        desktop::WindowList& windows = session->desk.windows();
        return desktop::waitUntil(
            [&] {
                const xcb_window_t popover = windows.ofTitle(TARVEL);
                const xcb_window_t lock = windows.viewableTopLevels().back();
                return popover != 0 && windows.isViewable(popover) && windows.focused() == lock;
            },
            PATIENCE
        );
    }
};

TEST_F(OwnWindows, ASecondStartOpensThePopover)
{
    ASSERT_TRUE(start({"-psn_0_1"}));
    EXPECT_EQ(session->desk.windows().ofTitle(TARVEL), 0U);
    desktop::ChildProcess second = session->desk.start({AgentSession::agentPath()});

    EXPECT_TRUE(getsKeys(TARVEL));
    EXPECT_FALSE(showsTheList());
    EXPECT_EQ(second.waitForExitStatus(PATIENCE), 0);
}

TEST_F(OwnWindows, AnOpenPopoverLeavesTheKeysToTheLock)
{
    ASSERT_TRUE(start({}));
    ASSERT_TRUE(getsKeys(TARVEL));

    lockAndUnlock();
    EXPECT_FALSE(showsTheList()); // the password was the lock's
}

TEST_F(OwnWindows, AnOpenMenuLeavesTheKeysToTheLock)
{
    ASSERT_TRUE(start({}));
    ASSERT_TRUE(unlockPopover());
    const std::size_t windows = session->desk.windows().viewableTopLevels().size();
    clickOptions();
    ASSERT_TRUE(desktop::waitUntil(
        [&] { return session->desk.windows().viewableTopLevels().size() > windows; }, PATIENCE
    ));

    lockAndUnlock();
}

TEST_F(OwnWindows, AnAlertOfTheWholeProgramLeavesTheKeysToTheLock)
{
    // a file where the folder of the login items should be
    desktop::writeFile(session->desk.home() / ".config/autostart", "");
    ASSERT_TRUE(start({}));
    ASSERT_TRUE(unlockPopover());
    const xcb_window_t popover = session->desk.windows().ofTitle(TARVEL);
    press('l', {desktop::KEY_ALT}); // start at login
    ASSERT_TRUE(session->waitForLine("startAtLoginConfigurationChanged"));
    ASSERT_TRUE(desktop::waitUntil(
        [&] { return session->desk.windows().ofTitle(TARVEL) != popover; }, PATIENCE
    ));
    ASSERT_TRUE(getsKeys(TARVEL)); // the alert
    const xcb_window_t alert = session->desk.windows().ofTitle(TARVEL);

    lockAndUnlock();
    EXPECT_EQ(session->desk.windows().ofTitle(TARVEL), alert); // it is still to be answered
    EXPECT_EQ(kept("LoginStart"), std::nullopt);
}

TEST_F(OwnWindowsDuringALock, ASecondStartLeavesTheKeysToTheLock)
{
    ASSERT_TRUE(start({"-psn_0_1"}));
    Recorder xterm(session->desk);
    ASSERT_TRUE(locks());
    desktop::ChildProcess second = session->desk.start({AgentSession::agentPath()});
    ASSERT_EQ(second.waitForExitStatus(PATIENCE), 0);
    ASSERT_TRUE(session->waitForLine("Focus"));

    EXPECT_TRUE(popoverLeavesTheFocus());
    EXPECT_TRUE(opensWithThePassword());
    EXPECT_FALSE(showsTheList());
    EXPECT_TRUE(getsFocus(xterm.process()));
}

TEST_F(OwnWindowsDuringALock, AFirstStartThatLocksAtOnceLeavesTheKeysToTheLock)
{
    desktop::writeFile(
        session->desk.home() / ".config/com.quorvent.Tarvel/defaults.json",
        R"({"cbaal": "debian-xterm"})"
    );
    Recorder xterm(session->desk);
    ASSERT_TRUE(getsFocus(xterm.process()));
    ASSERT_TRUE(start({}));
    ASSERT_TRUE(session->waitForCover());
    ASSERT_TRUE(session->waitForLine("Focus"));

    EXPECT_TRUE(popoverLeavesTheFocus());
    EXPECT_TRUE(opensWithThePassword());
    EXPECT_FALSE(showsTheList());
    EXPECT_TRUE(getsFocus(xterm.process()));
}

} // namespace agent
