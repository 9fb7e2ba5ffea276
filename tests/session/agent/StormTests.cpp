#include "desktop/ForeignClient.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/XConnection.h"
#include "session/agent/AgentTest.h"

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace agent {

namespace {

constexpr int FOREIGN_WINDOWS = 200;
constexpr desktop::Pixel GLARING = 0xFF00FF;

/// Spread over both screens.
void showForeignWindow(desktop::XConnection& connection, int number)
{
    const auto x = static_cast<std::int16_t>(number * 12 % 2400);
    const auto y = static_cast<std::int16_t>(number * 7 % 600);
    desktop::showForeignWindow(connection, {x, y, 200, 150}, GLARING);
}

} // namespace

class Storm : public AgentTest
{
protected:
    /// An application that ends as soon as it has started; the path of its program.
    std::filesystem::path addBriefApplication() const
    {
        std::filesystem::path program = session->desk.home() / "brief";
        std::filesystem::copy_file("/usr/bin/true", program);
        addEntry(
            "brief",
            "[Desktop Entry]\nType=Application\nName=Brief\nExec=" + program.string() + "\n"
        );
        return program;
    }

    /// Opens the first menu of the application in front; gives its window, or 0.
    xcb_window_t openMenu() const
    {
        desktop::WindowList& windows = session->desk.windows();
        const std::vector<xcb_window_t> before = windows.viewableTopLevels();
        std::vector<xcb_window_t> added;
        session->desk.input().press('f', {desktop::KEY_ALT});
        desktop::waitUntil(
            [&] {
                added = windows.viewableTopLevels();
                std::erase_if(added, [&before](xcb_window_t window) {
                    return std::find(before.begin(), before.end(), window) != before.end();
                });
                return !added.empty();
            },
            PATIENCE
        );
        return added.empty() ? 0 : added.back();
    }

    bool opensOnceItHasTheKeyboard() const
    {
        return desktop::waitUntil(
            [this] {
                session->enter(PASSWORD);
                return isUncovered(session->desk);
            },
            PATIENCE,
            100ms
        );
    }
};

TEST_F(Storm, AnApplicationThatEndsAtOnceLeavesNoLockBehind)
{
    open();
    const auto brief = addBriefApplication();
    watchHere({"brief", TERMINAL});

    for (int count = 0; count < 20; ++count) {
        session->desk.start({brief}).waitForEnd(PATIENCE);
    }

    ASSERT_TRUE(session->waitForLine("Terminated: Brief")) << "none of its starts was noticed";
    EXPECT_TRUE(session->waitForEndOfCover());
    const Recorder xterm(session->desk);
    EXPECT_TRUE(session->waitForCover());
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(Storm, TenStartsAtOnceAreHeldByOneLock)
{
    watch({TERMINAL});
    const auto terminals = startTerminals(10);

    ASSERT_TRUE(session->waitForCover() && session->waitForLine("Did start: XTerm", 10));
    EXPECT_TRUE(coverStaysFor(500ms) && opensWithThePassword());
    EXPECT_TRUE(std::all_of(terminals.begin(), terminals.end(), [](const auto& terminal) {
        return terminal->received().empty();
    }));
}

TEST_F(Storm, ForeignWindowsStayBelowTheLock)
{
    watch({TERMINAL});
    const Recorder xterm(session->desk);
    ASSERT_TRUE(locks());

    desktop::XConnection other(session->desk.server().displayName());
    for (int number = 0; number < FOREIGN_WINDOWS; ++number) {
        showForeignWindow(other, number);
    }

    EXPECT_TRUE(session->waitForCover() && coverStaysFor(500ms));
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(Storm, TheScreensAreCoveredThoughAnotherClientHoldsTheInput)
{
    watch({TERMINAL});
    auto holder = std::make_unique<desktop::XConnection>(session->desk.server().displayName());
    ASSERT_TRUE(desktop::grabInput(*holder));

    const Recorder xterm(session->desk);
    EXPECT_TRUE(session->waitForCover());
    session->enter(PASSWORD); // goes to the holder
    EXPECT_TRUE(coverStaysFor(500ms));
    holder.reset();

    EXPECT_TRUE(opensOnceItHasTheKeyboard());
}

TEST_F(Storm, AnOpenMenuIsClosedForTheLock)
{
    watch({TERMINAL});
    desktop::ChildProcess mousepad = session->desk.start({"mousepad"});
    ASSERT_TRUE(getsFocus(mousepad));
    const xcb_window_t menu = openMenu();
    ASSERT_NE(menu, 0U);

    const Recorder xterm(session->desk);
    ASSERT_TRUE(session->waitForCover());
    EXPECT_TRUE(
        desktop::waitUntil([&] { return !session->desk.windows().isViewable(menu); }, PATIENCE)
    );
    EXPECT_TRUE(opensOnceItHasTheKeyboard());
}

} // namespace agent
