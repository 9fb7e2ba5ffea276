// Where keys and clicks go while the screens are covered, with a real terminal underneath.
#include "HoldingClient.h"
#include "ToolkitWindow.h"
#include "X11World.h"
#include "desktop/TemporaryFolder.h"

#include <chrono>
#include <iostream>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xcb/xinput.h>

namespace {

using desktop::readFile;

/// A terminal that writes down, line by line, what is typed into it.
class Terminal
{
public:
    explicit Terminal(X11World& world)
        : world(world),
          file(world.session.folder() / "typed"),
          process(world.session.start({"xterm", "-e", "sh", "-c", "exec cat > " + file.string()}))
    {
    }

    bool hasFocusSoon()
    {
        return world.mainLoop.runUntil([this] {
            const xcb_window_t window = world.session.windows().ofClass("XTerm");
            return window != XCB_NONE && world.session.windows().active() == window &&
                   focusIsIn(window) && std::filesystem::exists(file);
        });
    }

    pid_t processIdentifier() const { return process.id(); }

    bool readsSoon(const std::string& text)
    {
        return world.mainLoop.runUntil([&] { return readFile(file) == text; });
    }

private:
    /// In the window itself or in one of its children.
    bool focusIsIn(xcb_window_t window)
    {
        desktop::XConnection& connection = world.session.connection();
        xcb_window_t focused = world.session.windows().focused();
        while (focused > XCB_INPUT_FOCUS_POINTER_ROOT && focused != window &&
               focused != connection.root()) {
            const desktop::Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
                connection.get(), xcb_query_tree(connection.get(), focused), nullptr
            ));
            focused = tree ? tree->parent : xcb_window_t{XCB_NONE};
        }
        return focused == window;
    }

    X11World& world;
    std::filesystem::path file;
    desktop::ChildProcess process;
};

class Capture : public testing::Test
{
protected:
    static constexpr platform::Rect FRAME{0, 0, 1280, 720};

    void lock() { world.application.setPresentationOptions(X11World::LOCKED); }

    void unlock()
    {
        world.application.setPresentationOptions(platform::PRESENTATION_DEFAULT);
        ASSERT_TRUE(world.mainLoop.runUntil([this] { return !world.guard.captured(); }));
    }

    /// Makes the toolkit's window the lock's own one, as the lock window does.
    std::unique_ptr<platform::PlainWindow> adopt(ToolkitWindow& window)
    {
        auto adopted = world.windows.adoptWindow(window.id(), world.lockAttributes(FRAME));
        window.show();
        adopted->makeKeyAndOrderFront();
        return adopted;
    }

    bool typedSoon(ToolkitWindow& window, const std::string& text)
    {
        return world.mainLoop.runUntil([&] { return window.typedText() == text; });
    }

    X11World world{true};
    desktop::Input& input = world.session.input();
    std::string display = world.session.server().displayName();
};

TEST_F(Capture, NoKeyReachesTheApplicationAndEveryKeyReachesTheLockWindowInOrder)
{
    world.windowSystem.start();
    Terminal terminal(world);
    ASSERT_TRUE(terminal.hasFocusSoon());
    input.type("before");
    input.press(desktop::KEY_RETURN);
    ASSERT_TRUE(terminal.readsSoon("before\n"));

    lock();
    ASSERT_TRUE(world.capturedSoon());
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    const std::string password = "Correct Horse 42, Battery Staple!";
    input.type(password);
    input.press(desktop::KEY_RETURN);
    EXPECT_TRUE(typedSoon(window, password));

    ASSERT_TRUE(world.windowSystem.bringForward(terminal.processIdentifier()));
    unlock();
    adopted->close();
    window.hide();
    ASSERT_TRUE(terminal.hasFocusSoon());
    input.type("after");
    input.press(desktop::KEY_RETURN);
    EXPECT_TRUE(terminal.readsSoon("before\nafter\n"));
}

TEST_F(Capture, KeysTypedBeforeThereIsALockWindowWaitForIt)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    input.type("Early");
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    input.type(" And Late");
    EXPECT_TRUE(typedSoon(window, "Early And Late"));
}

TEST_F(Capture, KeysTypedBeforeTheLockWindowIsShownWaitForThat)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    ToolkitWindow window(display, FRAME);
    const auto adopted = world.windows.adoptWindow(window.id(), world.lockAttributes(FRAME));
    adopted->makeKeyAndOrderFront();
    input.type("Hidden");
    EXPECT_EQ("", window.typedText());
    window.show();
    EXPECT_TRUE(typedSoon(window, "Hidden"));
}

TEST_F(Capture, TheLatestKeyWindowTakesTheKeysUntilItIsClosed)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    ToolkitWindow first(display, FRAME);
    ToolkitWindow second(display, FRAME);
    const auto adoptedFirst = adopt(first);
    const auto adoptedSecond = adopt(second);
    input.type("2");
    EXPECT_TRUE(typedSoon(second, "2"));
    adoptedSecond->close();
    second.hide();
    input.type("1");
    EXPECT_TRUE(typedSoon(first, "1"));
    EXPECT_EQ("2", second.typedText());
}

TEST_F(Capture, WhatWaitedForALockThatEndedIsForgotten)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    input.type("Gone");
    unlock();
    lock();
    ASSERT_TRUE(world.capturedSoon());
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    input.type("New");
    EXPECT_TRUE(typedSoon(window, "New"));
}

TEST_F(Capture, AKeyThatWasDownBeforeTheLockIsNotHandedOn)
{
    input.hold('x');
    lock();
    ASSERT_TRUE(world.capturedSoon());
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    input.release('x');
    input.type("y");
    ASSERT_TRUE(typedSoon(window, "y"));
    // Nothing of the first key: one press and one release.
    ASSERT_TRUE(world.mainLoop.runUntil([&] { return window.events().size() >= 2; }));
    EXPECT_EQ(2U, window.events().size());
}

TEST_F(Capture, AHeldKeyRepeatsAsReleaseAndPressOfTheSameTime)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    input.hold('r');
    ASSERT_TRUE(world.mainLoop.runUntil([&] { return window.events().size() >= 5; }));
    input.release('r');
    const auto& events = window.events();
    EXPECT_EQ(XCB_KEY_PRESS, events[0].response_type);
    EXPECT_EQ(XCB_KEY_RELEASE, events[1].response_type);
    EXPECT_EQ(XCB_KEY_PRESS, events[2].response_type);
    EXPECT_EQ(events[1].time, events[2].time);
    EXPECT_LT(events[0].time, events[1].time);
}

TEST_F(Capture, AClickReachesTheLockWindowWithItsPlaceInIt)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    constexpr platform::Rect PLACE{1280, 0, 1280, 720};
    ToolkitWindow window(display, FRAME);
    const auto adopted = world.windows.adoptWindow(window.id(), world.lockAttributes(PLACE));
    window.show();
    adopted->makeKeyAndOrderFront();
    input.type("k"); // once it arrives the window is the key window
    ASSERT_TRUE(typedSoon(window, "k"));
    input.click(10, 10); // on the other screen
    input.click(1400, 333);
    ASSERT_TRUE(world.mainLoop.runUntil([&] { return window.events().size() >= 4; }));
    const auto& events = window.events();
    EXPECT_EQ(XCB_BUTTON_PRESS, events[2].response_type);
    EXPECT_EQ(120, events[2].event_x);
    EXPECT_EQ(333, events[2].event_y);
    EXPECT_EQ(XCB_BUTTON_RELEASE, events[3].response_type);
    EXPECT_EQ(4U, events.size());
}

TEST_F(Capture, WindowManagerShortcutsDoNothing)
{
    Terminal terminal(world);
    ASSERT_TRUE(terminal.hasFocusSoon());
    lock();
    ASSERT_TRUE(world.capturedSoon());
    input.press(desktop::KEY_F4, {desktop::KEY_ALT}); // closes the active window
    unlock();
    input.type("alive");
    input.press(desktop::KEY_RETURN);
    EXPECT_TRUE(terminal.readsSoon("alive\n"));
}

TEST_F(Capture, ComesAsSoonAsAnotherHolderLetsGo)
{
    HoldingClient holder(display);
    lock();
    ASSERT_TRUE(world.mainLoop.runUntil([this] { return world.allCovered(); }));
    EXPECT_FALSE(world.guard.captured());
    holder.letGo();
    EXPECT_TRUE(world.capturedSoon());
}

TEST_F(Capture, AnOpenMenuThatHoldsTheKeyboardIsClosedByEscape)
{
    HoldingClient menu(display);
    lock();
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(world.mainLoop.runUntil([&] {
        menu.turn();
        return world.guard.captured();
    }));
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    std::cout << "captured " << taken.count() << " s after the lock came over a menu\n";
    EXPECT_FALSE(menu.holds());
    EXPECT_EQ(1, menu.keysSeen());
}

TEST_F(Capture, TheEscapeIsNotTakenForAKeyOfTheUser)
{
    HoldingClient menu(display);
    lock();
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    ASSERT_TRUE(world.mainLoop.runUntil([&] {
        menu.turn();
        return world.guard.captured();
    }));
    input.type("z");
    ASSERT_TRUE(typedSoon(window, "z"));
    EXPECT_EQ('z', static_cast<int>(window.typedText().back()));
    const xcb_keycode_t first = window.events().front().detail;
    for (const xcb_key_press_event_t& event : window.events()) {
        EXPECT_EQ(first, event.detail);
    }
}

TEST_F(Capture, AMissingCaptureIsReportedOnceAndItsComingToo)
{
    {
        HoldingClient holder(display);
        lock();
        ASSERT_TRUE(world.mainLoop.runUntil([this] { return world.reports.count() >= 1; }));
        holder.letGo();
    }
    ASSERT_TRUE(world.mainLoop.runUntil([this] { return world.reports.count() >= 2; }));
    EXPECT_THAT(
        world.reports.all(),
        testing::ElementsAre(
            "the keyboard is held by another program and not captured yet; trying on",
            "keyboard and pointer are captured now"
        )
    );
}

/// Adds a second pair of master devices to the display, and takes it away with the object.
class SecondMasters
{
public:
    explicit SecondMasters(desktop::XConnection& connection) : connection(connection)
    {
        const struct
        {
            xcb_input_add_master_t change;
            char name[8];
        } request{{XCB_INPUT_HIERARCHY_CHANGE_TYPE_ADD_MASTER, 4, 6, 1, 1}, "second"};

        xcb_input_xi_query_version_reply_t* version = xcb_input_xi_query_version_reply(
            connection.get(), xcb_input_xi_query_version(connection.get(), 2, 2), nullptr
        );
        const desktop::Reply<xcb_input_xi_query_version_reply_t> owned(version);
        xcb_input_xi_change_hierarchy(
            connection.get(),
            1,
            static_cast<const xcb_input_hierarchy_change_t*>(static_cast<const void*>(&request))
        );
        connection.sync();
    }

    /// What a grab of the device by this program answers.
    std::uint8_t grabStatus(xcb_input_device_id_t device)
    {
        const std::uint32_t mask = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
        const desktop::Reply<xcb_input_xi_grab_device_reply_t> reply(xcb_input_xi_grab_device_reply(
            connection.get(),
            xcb_input_xi_grab_device(
                connection.get(),
                connection.root(),
                XCB_CURRENT_TIME,
                XCB_NONE,
                device,
                XCB_INPUT_GRAB_MODE_22_ASYNC,
                XCB_INPUT_GRAB_MODE_22_ASYNC,
                XCB_INPUT_GRAB_OWNER_NO_OWNER,
                1,
                &mask
            ),
            nullptr
        ));
        if (reply && reply->status == XCB_GRAB_STATUS_SUCCESS) { // only to see
            xcb_input_xi_ungrab_device(connection.get(), XCB_CURRENT_TIME, device);
            connection.sync();
        }
        return reply ? reply->status : std::uint8_t{XCB_GRAB_STATUS_INVALID_TIME};
    }

    std::vector<xcb_input_device_id_t> keyboards()
    {
        const desktop::Reply<xcb_input_xi_query_device_reply_t> reply(
            xcb_input_xi_query_device_reply(
                connection.get(),
                xcb_input_xi_query_device(connection.get(), XCB_INPUT_DEVICE_ALL_MASTER),
                nullptr
            )
        );
        std::vector<xcb_input_device_id_t> found;
        auto infos = xcb_input_xi_query_device_infos_iterator(reply.get());
        for (; infos.rem > 0; xcb_input_xi_device_info_next(&infos)) {
            if (infos.data->type == XCB_INPUT_DEVICE_TYPE_MASTER_KEYBOARD) {
                found.push_back(infos.data->deviceid);
            }
        }
        return found;
    }

private:
    desktop::XConnection& connection;
};

TEST_F(Capture, MasterDevicesThatAreAddedDuringALockAreHeldToo)
{
    lock();
    ASSERT_TRUE(world.capturedSoon());
    desktop::XConnection other(display);
    SecondMasters masters(other);
    ASSERT_EQ(2U, masters.keyboards().size());
    for (const xcb_input_device_id_t keyboard : masters.keyboards()) {
        EXPECT_TRUE(world.mainLoop.runUntil([&] {
            return masters.grabStatus(keyboard) == XCB_GRAB_STATUS_ALREADY_GRABBED;
        }));
    }
    EXPECT_TRUE(world.guard.captured());
}

TEST_F(Capture, IsTakenAgainWhenTheServerBreaksIt)
{
    // The server's own way to break every grab, as an administrator can allow it.
    auto keyboard = world.session.start({"setxkbmap", "-option", "grab:break_actions"});
    ASSERT_EQ(0, keyboard.waitForExitStatus(std::chrono::seconds(10)));
    lock();
    ASSERT_TRUE(world.capturedSoon());
    desktop::XConnection other(display);
    SecondMasters masters(other);
    constexpr std::uint32_t KEYPAD_DIVIDE = 0xffaf;
    input.press(KEYPAD_DIVIDE, {desktop::KEY_CONTROL, desktop::KEY_ALT});
    for (const xcb_input_device_id_t device : masters.keyboards()) {
        EXPECT_TRUE(world.mainLoop.runUntil([&] {
            return masters.grabStatus(device) == XCB_GRAB_STATUS_ALREADY_GRABBED;
        }));
    }
    ToolkitWindow window(display, FRAME);
    const auto adopted = adopt(window);
    input.type("again");
    EXPECT_TRUE(typedSoon(window, "again"));
}

} // namespace
