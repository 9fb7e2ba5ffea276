// A terminal whose windows all belong to one server, which a client that soon ends asks for them.

#include "desktop/TemporaryFolder.h"
#include "session/agent/AgentTest.h"

#include <algorithm>
#include <filesystem>

namespace agent {

class TerminalServer : public AgentTest
{
protected:
    void SetUp() override
    {
        desktop::Desktop::Parts parts;
        parts.services = "/usr/share/dbus-1/services";
        open(parts);
        watchHere({"org.gnome.Terminal"});
    }

    /// Asks for a window in which everything that is typed is kept under this name.
    desktop::ChildProcess askForWindow(const std::string& name) const
    {
        return session->desk.start(
            {"gnome-terminal",
             "--",
             "sh",
             "-c",
             "stty raw -echo; exec tee '" + fileOf(name).string() + "'"}
        );
    }

    /// Whether the window is locked from its beginning to the password, once all that starts it has
    /// come to its end.
    bool isLockedAndOpened(const std::string& name) const
    {
        desktop::ChildProcess client = askForWindow(name);
        return session->waitForCover() && client.waitForEnd(PATIENCE) && listens(name) &&
               coverStaysFor(500ms) && opensWithThePassword();
    }

    bool hasWindows(std::ptrdiff_t number) const
    {
        return desktop::waitUntil([&] { return windows() == number; }, PATIENCE);
    }

    bool terminalGetsFocus() const
    {
        desktop::WindowList& list = session->desk.windows();
        return desktop::waitUntil([&] { return isTerminal(list.active()); }, PATIENCE);
    }

    std::string typedInto(const std::string& name) const { return desktop::readFile(fileOf(name)); }

private:
    std::filesystem::path fileOf(const std::string& name) const
    {
        return session->desk.home() / (name + ".keys");
    }

    bool listens(const std::string& name) const
    {
        return desktop::waitUntil([&] { return std::filesystem::exists(fileOf(name)); }, PATIENCE);
    }

    bool isTerminal(xcb_window_t window) const
    {
        return session->desk.windows().classOf(window) == "Gnome-terminal";
    }

    std::ptrdiff_t windows() const
    {
        const std::vector<xcb_window_t> managed = session->desk.windows().managed();
        return std::count_if(managed.begin(), managed.end(), [this](xcb_window_t window) {
            return isTerminal(window);
        });
    }
};

TEST_F(TerminalServer, AFurtherWindowIsLockedAsTheFirstOneWas)
{
    ASSERT_TRUE(isLockedAndOpened("first") && hasWindows(1));
    ASSERT_TRUE(isLockedAndOpened("second") && hasWindows(2));

    EXPECT_EQ(typedInto("first") + typedInto("second"), "");
    ASSERT_TRUE(terminalGetsFocus());
    session->desk.input().type("after");
    EXPECT_TRUE(desktop::waitUntil(
        [this] { return typedInto("first") + typedInto("second") == "after"; }, PATIENCE
    ));
}

TEST_F(TerminalServer, AWindowThatItOpensItselfIsNoStart)
{
    ASSERT_TRUE(isLockedAndOpened("first") && hasWindows(1) && terminalGetsFocus());

    session->desk.input().press('n', {desktop::KEY_CONTROL, desktop::KEY_SHIFT});

    EXPECT_TRUE(hasWindows(2));
    EXPECT_TRUE(desktop::holdsFor([this] { return isUncovered(session->desk); }, 500ms));
}

} // namespace agent
