#include "desktop/TemporaryFolder.h"
#include "desktop/XConnection.h"
#include "session/agent/AgentTest.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>

namespace agent {

namespace {

constexpr int FOREIGN_WINDOWS = 200;
constexpr std::uint32_t GLARING = 0xFF00FF;

/// Windows outside the window manager's reach, spread over both screens.
void mapForeignWindow(desktop::XConnection& connection, int number)
{
    const xcb_window_t window = xcb_generate_id(connection.get());
    const std::array<std::uint32_t, 2> values = {GLARING, 1};
    xcb_create_window(
        connection.get(),
        XCB_COPY_FROM_PARENT,
        window,
        connection.root(),
        static_cast<std::int16_t>(number * 12 % 2400),
        static_cast<std::int16_t>(number * 7 % 600),
        200,
        150,
        0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT,
        XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
        values.data()
    );
    xcb_map_window(connection.get(), window);
    connection.sync();
}

bool grab(desktop::XConnection& connection)
{
    const desktop::Reply<xcb_grab_keyboard_reply_t> keyboard(xcb_grab_keyboard_reply(
        connection.get(),
        xcb_grab_keyboard(
            connection.get(),
            1,
            connection.root(),
            XCB_CURRENT_TIME,
            XCB_GRAB_MODE_ASYNC,
            XCB_GRAB_MODE_ASYNC
        ),
        nullptr
    ));
    const desktop::Reply<xcb_grab_pointer_reply_t> pointer(xcb_grab_pointer_reply(
        connection.get(),
        xcb_grab_pointer(
            connection.get(),
            1,
            connection.root(),
            XCB_EVENT_MASK_BUTTON_PRESS,
            XCB_GRAB_MODE_ASYNC,
            XCB_GRAB_MODE_ASYNC,
            XCB_NONE,
            XCB_NONE,
            XCB_CURRENT_TIME
        ),
        nullptr
    ));
    return keyboard && keyboard->status == XCB_GRAB_STATUS_SUCCESS && pointer &&
           pointer->status == XCB_GRAB_STATUS_SUCCESS;
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

    EXPECT_TRUE(session->waitForEndOfCover());
    const Recorder xterm(session->desk);
    EXPECT_TRUE(session->waitForCover());
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(Storm, TenStartsAtOnceAreHeldByOneLock)
{
    watch({TERMINAL});
    std::vector<std::unique_ptr<Recorder>> terminals;
    terminals.reserve(10);
    for (int number = 0; number < 10; ++number) {
        terminals.push_back(
            std::make_unique<Recorder>(session->desk, "terminal" + std::to_string(number))
        );
    }

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
        mapForeignWindow(other, number);
    }

    EXPECT_TRUE(session->waitForCover() && coverStaysFor(500ms));
    EXPECT_TRUE(opensWithThePassword());
}

TEST_F(Storm, TheScreensAreCoveredThoughAnotherClientHoldsTheInput)
{
    watch({TERMINAL});
    auto holder = std::make_unique<desktop::XConnection>(session->desk.server().displayName());
    ASSERT_TRUE(grab(*holder));

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
