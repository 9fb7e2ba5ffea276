// Whose process a window is taken for: the server's word, else the window's, but never that of a
// window from another machine.
#include "desktop/ForeignClient.h"
#include "desktop/MainLoop.h"
#include "desktop/PrivateXServer.h"
#include "linux/x11/WindowInspector.h"

#include <array>
#include <climits>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

constexpr pid_t CLAIMED = 1; // as the window says; it is this process's

std::string thisMachine()
{
    std::array<char, HOST_NAME_MAX + 1> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

class WindowProcess : public testing::Test
{
protected:
    explicit WindowProcess(const std::vector<std::string>& options = {})
        : server(desktop::PrivateXServer::twoScreens(), {{"PATH", "/usr/bin:/bin"}}, {}, options)
    {
        const pid_t claimed = CLAIMED;
        change(client.atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1, &claimed);
    }

    void comesFrom(const std::string& machine)
    {
        change(
            XCB_ATOM_WM_CLIENT_MACHINE,
            XCB_ATOM_STRING,
            8,
            static_cast<std::uint32_t>(machine.size()),
            machine.data()
        );
    }

    [[nodiscard]] pid_t process() const { return inspector.processOf(window); }

    [[nodiscard]] bool isRemote() const { return inspector.factsOf(window).remote; }

private:
    void change(
        xcb_atom_t name, xcb_atom_t type, std::uint8_t format, std::uint32_t size, const void* data
    )
    {
        xcb_change_property(
            client.get(), XCB_PROP_MODE_REPLACE, window, name, type, format, size, data
        );
        client.sync();
    }

    desktop::PrivateXServer server;
    desktop::MainLoop mainLoop;
    x11::X11Desktop display{
        x11::Connection::open(server.displayName()), mainLoop, [](const auto& /*line*/) {}};
    x11::WindowInspector inspector{display};
    desktop::XConnection client{server.displayName()};
    xcb_window_t window = desktop::createForeignWindow(client, {0, 0, 10, 10}, 0);
};

/// As the server is where a client does not connect by a way of this machine.
class WindowProcessByItsWord : public WindowProcess
{
protected:
    WindowProcessByItsWord() : WindowProcess({"-extension", "X-Resource"}) {}
};

} // namespace

TEST_F(WindowProcess, IsTheOneThatTheServerKnows)
{
    EXPECT_EQ(process(), getpid());
    comesFrom(thisMachine());
    EXPECT_EQ(process(), getpid());
    EXPECT_FALSE(isRemote());
    comesFrom("elsewhere");
    EXPECT_EQ(process(), getpid());
    EXPECT_TRUE(isRemote());
}

TEST_F(WindowProcessByItsWord, IsTheOneThatTheWindowNames)
{
    EXPECT_EQ(process(), CLAIMED);
}

TEST_F(WindowProcessByItsWord, IsTheOneThatTheWindowNamesOnThisMachine)
{
    comesFrom(thisMachine());
    EXPECT_EQ(process(), CLAIMED);
    comesFrom(thisMachine() + '\0');
    EXPECT_EQ(process(), CLAIMED);
}

TEST_F(WindowProcessByItsWord, IsNobodyHereWhenTheWindowIsAnotherMachines)
{
    comesFrom("elsewhere");
    EXPECT_EQ(process(), 0);
    comesFrom(thisMachine() + ".elsewhere");
    EXPECT_EQ(process(), 0);
}
