// The lock where a compositing manager draws the screens from pictures of whole windows.

#include "desktop/Pixels.h"
#include "session/agent/AgentTest.h"

#include <csignal>
#include <optional>

namespace agent {

class Composited : public AgentTest
{
protected:
    void SetUp() override { open(); }

    /// One that draws by the server's means and fades nothing.
    void startCompositor()
    {
        compositor.emplace(
            session->desk.start({"picom", "--config", "/dev/null", "--backend", "xrender"})
        );
        ASSERT_TRUE(desktop::waitUntil([this] { return isComposited(); }, PATIENCE));
    }

    void endCompositor()
    {
        compositor->signal(SIGKILL);
        ASSERT_TRUE(desktop::waitUntil([this] { return !isComposited(); }, PATIENCE));
    }

    bool showsTheTerminal() const
    {
        desktop::XConnection& connection = session->desk.connection();
        const auto all = session->desk.windows().placeOf(connection.root());
        return desktop::capture(connection, all).contains(Recorder::PAPER);
    }

    bool hidesTheTerminalFor(std::chrono::milliseconds duration) const
    {
        return desktop::holdsFor([this] { return !showsTheTerminal(); }, duration);
    }

    bool showsTheTerminalSoon() const
    {
        return desktop::waitUntil([this] { return showsTheTerminal(); }, PATIENCE);
    }

private:
    bool isComposited() const
    {
        desktop::XConnection& connection = session->desk.connection();
        const desktop::Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
            connection.get(),
            xcb_get_selection_owner(connection.get(), connection.atom("_NET_WM_CM_S0")),
            nullptr
        ));
        return owner && owner->owner != XCB_NONE;
    }

    std::optional<desktop::ChildProcess> compositor;
};

TEST_F(Composited, NoPixelOfTheApplicationShowsThroughTheLock)
{
    startCompositor();
    watchHere({TERMINAL});
    const Recorder xterm(session->desk);

    ASSERT_TRUE(locks());
    EXPECT_TRUE(hidesTheTerminalFor(1s) && isCovered(session->desk));
    EXPECT_TRUE(opensWithThePassword());
    EXPECT_TRUE(showsTheTerminalSoon());
}

TEST_F(Composited, ACompositorThatComesDuringALockUncoversNothing)
{
    watchHere({TERMINAL});
    const Recorder xterm(session->desk);
    ASSERT_TRUE(locks());

    startCompositor();

    EXPECT_TRUE(hidesTheTerminalFor(1s) && session->waitForCover() && coverStaysFor(500ms));
    EXPECT_TRUE(opensWithThePassword());
    EXPECT_TRUE(showsTheTerminalSoon());
}

TEST_F(Composited, ACompositorThatDiesDuringALockUncoversNothing)
{
    startCompositor();
    watchHere({TERMINAL});
    const Recorder xterm(session->desk);
    ASSERT_TRUE(locks());

    endCompositor();

    EXPECT_TRUE(hidesTheTerminalFor(1s) && session->waitForCover() && coverStaysFor(500ms));
    EXPECT_TRUE(opensWithThePassword());
    EXPECT_TRUE(showsTheTerminalSoon());
}

} // namespace agent
