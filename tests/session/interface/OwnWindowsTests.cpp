// The agent's own windows beside its lock: none of them keeps anything from it.

#include "agent/Recorder.h"
#include "desktop/TemporaryFolder.h"
#include "session/interface/InterfaceTest.h"

namespace agent {

namespace {

constexpr auto TERMINAL = "debian-xterm";

} // namespace

class OwnWindowsTest : public InterfaceTest
{
protected:
    void SetUp() override
    {
        InterfaceTest::SetUp();
        showInstalledApplications();
        session->protect({TERMINAL});
    }

    bool locks() const
    {
        return session->waitForCover() && session->waitForLine("Did start: XTerm");
    }

    void waitUntilInFront(const desktop::ChildProcess& application)
    {
        user->waitUntil("the application is in front", [&] {
            return desk().windows().activeProcess() == application.id();
        });
    }
};

/// Windows of the agent that are open when a lock comes.
class OwnWindows : public OwnWindowsTest
{
protected:
    void SetUp() override
    {
        OwnWindowsTest::SetUp();
        startAgent();
    }

    /// A terminal that is started now is locked, and to be had with the password.
    void lockAndUnlock()
    {
        Recorder xterm(desk());
        ASSERT_TRUE(locks());
        session->enter(PASSWORD); // once: an alert would end at the first Return
        waitUntilInFront(xterm.process());
        EXPECT_TRUE(xterm.waitUntilItListens());
        EXPECT_EQ(xterm.received(), "");
    }
};

/// Windows of the agent that come while it locks.
class OwnWindowsDuringALock : public OwnWindowsTest
{
protected:
    /// The popover's window is there, and the keyboard is the lock's all the same.
    void waitForPopoverWithoutFocus()
    {
        user->waitUntil("the popover opens and leaves the keyboard to the lock", [this] {
            const xcb_window_t popover = desk().windows().ofTitle(screens::POPOVER);
            const xcb_window_t lock = desk().windows().viewableTopLevels().back();
            return popover != 0 && desk().windows().isViewable(popover) &&
                   desk().windows().focused() == lock;
        });
    }

    /// The password, typed once, is the lock's and not the popover's.
    void unlockFor(const desktop::ChildProcess& application)
    {
        session->enter(PASSWORD);
        EXPECT_TRUE(session->waitForEndOfCover());
        EXPECT_FALSE(user->sees(screens::CONTENT));
        waitUntilInFront(application);
    }
};

TEST_F(OwnWindows, AnOpenPopoverLeavesTheKeysToTheLock)
{
    user->waitForFocusOn(screens::GATE);

    lockAndUnlock();

    EXPECT_FALSE(user->sees(screens::CONTENT)); // the password was the lock's
}

TEST_F(OwnWindows, AnOpenMenuLeavesTheKeysToTheLock)
{
    unlock();
    user->click(screens::OPTIONS);
    user->waitUntil("the menu is open", [this] { return user->placeOfMenu().has_value(); });

    lockAndUnlock();
}

TEST_F(OwnWindows, AnAlertOfTheWholeProgramLeavesTheKeysToTheLock)
{
    // a file where the folder of the login items should be
    desktop::writeFile(desk().home() / ".config/autostart", "");
    unlock();
    user->press('l', {desktop::KEY_ALT}); // start at login
    user->waitForFocusOn(screens::ALERT_BUTTON);

    lockAndUnlock();

    EXPECT_TRUE(user->sees(screens::ALERT_BUTTON)); // it is still to be answered
    EXPECT_EQ(setting("LoginStart"), std::nullopt);
}

TEST_F(OwnWindowsDuringALock, ASecondStartLeavesTheKeysToTheLock)
{
    ASSERT_TRUE(session->startAndWait());
    Recorder xterm(desk());
    ASSERT_TRUE(locks());
    desktop::ChildProcess second = desk().start({AgentSession::agentPath()});
    ASSERT_EQ(second.waitForExitStatus(PATIENCE), 0);
    ASSERT_TRUE(session->waitForLine("Focus"));

    waitForPopoverWithoutFocus();
    unlockFor(xterm.process());
}

TEST_F(OwnWindowsDuringALock, AFirstStartThatLocksAtOnceLeavesTheKeysToTheLock)
{
    desktop::writeFile(
        desk().home() / ".config/com.quorvent.Tarvel/defaults.json", R"({"cbaal": "debian-xterm"})"
    );
    Recorder xterm(desk());
    waitUntilInFront(xterm.process());
    session->startAgent({});
    ASSERT_TRUE(session->waitForCover());
    ASSERT_TRUE(session->waitForLine("Focus"));

    waitForPopoverWithoutFocus();
    unlockFor(xterm.process());
}

} // namespace agent
