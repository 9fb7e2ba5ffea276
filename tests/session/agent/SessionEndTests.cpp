// Requests to end that come from the session, from outside of the agent.

#include "session/agent/AgentTest.h"
#include "sessionmanager/SessionManager.h"

#include <algorithm>

namespace agent {

class SessionEnd : public AgentTest
{
protected:
    void SetUp() override
    {
        open();
        session->desk.environment["SESSION_MANAGER"] = manager.address();
        watchHere({TERMINAL});
        // Terminals would register, too.
        session->desk.environment.erase("SESSION_MANAGER");
    }

    SessionManager manager;
};

TEST_F(SessionEnd, IsRefusedToTheSessionManagerAndProtectionGoesOn)
{
    ASSERT_TRUE(manager.waitForClient(PATIENCE));
    const pid_t agent = session->process().id();

    EXPECT_EQ(manager.askToShutDown(PATIENCE), std::optional(false));
    manager.die();

    const Recorder xterm(session->desk);
    EXPECT_TRUE(locks() && opensWithThePassword());
    EXPECT_EQ(session->agents(), std::vector<pid_t>{agent});
}

TEST_F(SessionEnd, IsRefusedToTheSessionManagerWhileLockedAndTheLockStays)
{
    ASSERT_TRUE(manager.waitForClient(PATIENCE));
    const pid_t agent = session->process().id();
    const Recorder xterm(session->desk);
    ASSERT_TRUE(locks());

    EXPECT_EQ(manager.askToShutDown(PATIENCE), std::optional(false));
    manager.die();

    EXPECT_TRUE(coverStaysFor(500ms) && opensWithThePassword());
    EXPECT_EQ(session->agents(), std::vector<pid_t>{agent});
}

TEST_F(SessionEnd, AskedOfTheLocksWindowsClosesNoneOfThem)
{
    const Recorder xterm(session->desk);
    ASSERT_TRUE(locks());
    const std::vector<xcb_window_t> windows = session->desk.windows().viewableTopLevels();
    desktop::XConnection& connection = session->desk.connection();

    for (const xcb_window_t window : windows) {
        xcb_client_message_event_t request{};
        request.response_type = XCB_CLIENT_MESSAGE;
        request.format = 32;
        request.window = window;
        request.type = connection.atom("WM_PROTOCOLS");
        request.data.data32[0] = connection.atom("WM_DELETE_WINDOW");
        const auto* bytes = static_cast<const char*>(static_cast<const void*>(&request));
        xcb_send_event(connection.get(), 0, window, XCB_EVENT_MASK_NO_EVENT, bytes);
    }
    connection.sync();

    EXPECT_TRUE(coverStaysFor(500ms) && showsControls(session->desk));
    EXPECT_TRUE(opensWithThePassword());
}

} // namespace agent
