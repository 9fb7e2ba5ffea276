// A password whose letters are made of several keys, typed with the keys of a layout that has them.

#include "session/agent/AgentTest.h"

#include <string>

namespace agent {

namespace {

constexpr std::uint32_t DEAD_ACUTE = 0xFE51;
constexpr auto E_ACUTE = "\xC3\xA9";

} // namespace

class DeadKeys : public AgentTest
{
protected:
    void SetUp() override
    {
        open();
        ASSERT_TRUE(useInternationalLayout());
    }

    bool useInternationalLayout() const
    {
        auto layout = session->desk.start({"setxkbmap", "-layout", "us", "-variant", "intl"});
        return layout.waitForExitStatus(PATIENCE) == 0;
    }

    /// The agent, with "é" as its password.
    void watchWithThePassword()
    {
        session->protect({TERMINAL});
        session->storeSetting("Password", E_ACUTE);
        ASSERT_TRUE(session->startAndWait());
    }

    bool opensWithADeadKey() const
    {
        session->desk.input().press(DEAD_ACUTE);
        session->desk.input().press('e');
        session->desk.input().press(desktop::KEY_RETURN);
        return session->waitForEndOfCover();
    }

    /// Whether a window of this title comes and has the keyboard.
    bool getsKeys(const std::string& title) const
    {
        return desktop::waitUntil(
            [&] {
                desktop::WindowList& windows = session->desk.windows();
                const xcb_window_t window = windows.ofTitle(title);
                return window != 0 && windows.focused() == window;
            },
            PATIENCE
        );
    }

    /// "clé sesame"
    void typeLongPassword() const
    {
        session->desk.input().type("cl");
        session->desk.input().press(DEAD_ACUTE);
        session->desk.input().type("e sesame");
    }
};

TEST_F(DeadKeys, OpenTheLock)
{
    watchWithThePassword();
    const Recorder xterm(session->desk);
    ASSERT_TRUE(locks());
    EXPECT_TRUE(opensWithADeadKey());
}

TEST_F(DeadKeys, OpenTheLockAsSoonAsItCovers)
{
    watchWithThePassword();
    const Recorder xterm(session->desk);
    ASSERT_TRUE(session->waitForLine("Will start: XTerm"));
    ASSERT_TRUE(desktop::waitUntil([this] { return isCovered(session->desk); }, PATIENCE));
    EXPECT_TRUE(opensWithADeadKey());
}

TEST_F(DeadKeys, OpenTheLockAfterAltGaveTheFocusAway)
{
    watchWithThePassword();
    Recorder xterm(session->desk);
    ASSERT_TRUE(locks());
    const auto terminalHasFocus = [this] {
        desktop::WindowList& windows = session->desk.windows();
        return windows.focused() == windows.ofClass("XTerm");
    };
    // A toolkit believes in the loss of its focus after a while only.
    ASSERT_TRUE(desktop::waitUntil(
        [&] {
            session->desk.input().press(desktop::KEY_ALT);
            return desktop::waitUntil(terminalHasFocus, 1s) &&
                   desktop::holdsFor(terminalHasFocus, 1s);
        },
        PATIENCE
    ));
    EXPECT_TRUE(opensWithADeadKey());
    EXPECT_TRUE(getsFocus(xterm.process()));
}

TEST_F(DeadKeys, OpenTheLockWithWhatTheyMadeInThePasswordWindow)
{
    session->storeSetting("Applications", std::string(TERMINAL) + ";");
    session->storeSetting("Administrative", "0");
    session->startAgent();
    ASSERT_TRUE(getsKeys("Welcome to Tarvel"));
    session->desk.input().press(desktop::KEY_RETURN);
    ASSERT_TRUE(getsKeys("Tarvel Password"));
    typeLongPassword();
    session->desk.input().press(desktop::KEY_TAB);
    typeLongPassword();
    session->desk.input().press(desktop::KEY_RETURN);
    ASSERT_TRUE(session->waitForLine("Monitoring services started"));
    EXPECT_EQ(
        session->desk.keyring().items().lookUp("com.quorvent.Tarvel (Password)"),
        "cl" + std::string(E_ACUTE) + " sesame"
    );
    ASSERT_TRUE(getsKeys("Tarvel")); // the popover, which opens by itself after that

    const Recorder xterm(session->desk);
    ASSERT_TRUE(locks());
    typeLongPassword();
    session->desk.input().press(desktop::KEY_RETURN);
    EXPECT_TRUE(session->waitForEndOfCover());
}

class DeadKeysWithInputMethod : public DeadKeys, public testing::WithParamInterface<const char*>
{
};

TEST_P(DeadKeysWithInputMethod, OpenTheLock)
{
    session->desk.environment["QT_IM_MODULE"] = GetParam();
    watchWithThePassword();
    const Recorder xterm(session->desk);
    ASSERT_TRUE(locks());
    EXPECT_TRUE(opensWithADeadKey());
}

INSTANTIATE_TEST_SUITE_P(
    Modules,
    DeadKeysWithInputMethod,
    testing::Values("none", "ibus", "compose"),
    [](const auto& tested) { return std::string(tested.param); }
);

} // namespace agent
