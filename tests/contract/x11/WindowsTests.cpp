// What every implementation of the windows promises, asked of the fake and of a real display.
#include "ToolkitWindow.h"
#include "X11World.h"
#include "fakes/FakeWindows.h"
#include "platform/Port.h"

#include <memory>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Windows, and how many of them can be seen.
class World : public platform::Port
{
public:
    virtual platform::Windows& windows() = 0;
    virtual bool seesSoon(int count) = 0;
};

class FakeWorld final : public World
{
public:
    platform::Windows& windows() override { return fake; }

    bool seesSoon(int count) override { return fake.visibleCount() == count; }

private:
    fakes::Calls calls;
    fakes::FakeWindows fake{calls};
};

class RealWorld final : public World
{
public:
    platform::Windows& windows() override { return world.windows; }

    bool seesSoon(int count) override
    {
        return world.mainLoop.runUntil([&] {
            return world.session.windows().viewableTopLevels().size() ==
                   static_cast<std::size_t>(count);
        });
    }

private:
    X11World world;
};

template <typename W> class WindowsContract : public testing::Test
{
protected:
    W world;
    platform::WindowAttributes attributes{
        .backgroundColor = {1.0, 0.0, 0.0, 1.0},
        .level = platform::WindowLevelKey::ScreenSaver,
        .frame = {10, 20, 300, 200}};
};

using Worlds = testing::Types<FakeWorld, RealWorld>;
TYPED_TEST_SUITE(WindowsContract, Worlds);

TYPED_TEST(WindowsContract, ANewWindowIsNotShown)
{
    const auto first = this->world.windows().createWindow(this->attributes);
    const auto second = this->world.windows().createWindow(this->attributes);
    second->makeKeyAndOrderFront();
    EXPECT_TRUE(this->world.seesSoon(1));
}

TYPED_TEST(WindowsContract, AClosedWindowIsNotSeenAndCanComeBack)
{
    const auto window = this->world.windows().createWindow(this->attributes);
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(this->world.seesSoon(1));
    window->close();
    EXPECT_TRUE(this->world.seesSoon(0));
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(this->world.seesSoon(1));
}

TYPED_TEST(WindowsContract, ADestroyedWindowIsNotSeen)
{
    auto window = this->world.windows().createWindow(this->attributes);
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(this->world.seesSoon(1));
    window.reset();
    EXPECT_TRUE(this->world.seesSoon(0));
}

TEST(X11Windows, ACoverHasExactlyItsFrameAndItsColour)
{
    X11World world;
    platform::WindowAttributes attributes = world.lockAttributes({1280, 100, 640, 480});
    attributes.backgroundColor = {1.0, 0.0, 0.0, 1.0};
    const auto window = world.windows.createWindow(attributes);
    window->makeKeyAndOrderFront();
    const desktop::Rectangle frame{1280, 100, 640, 480};
    const desktop::Rectangle all{0, 0, 2560, 720};
    constexpr desktop::Pixel RED = 0xFF0000;
    auto& connection = world.session.connection();
    ASSERT_TRUE(world.mainLoop.runUntil([&] {
        return desktop::capture(connection, frame).isAllOf(RED);
    }));
    const auto picture = desktop::capture(connection, all);
    EXPECT_EQ(std::size_t{2560} * 720 - std::size_t{640} * 480, picture.countOthers(RED));
}

TEST(X11Windows, AHigherLevelLiesAboveALowerOneThatCameLater)
{
    X11World world;
    platform::WindowAttributes attributes = world.lockAttributes({0, 0, 100, 100});
    attributes.backgroundColor = {1.0, 0.0, 0.0, 1.0};
    const auto high = world.windows.createWindow(attributes);
    attributes.backgroundColor = {0.0, 0.0, 1.0, 1.0};
    attributes.level = platform::WindowLevelKey::ModalPanel;
    attributes.frame = {0, 0, 200, 100};
    const auto low = world.windows.createWindow(attributes);
    high->makeKeyAndOrderFront();
    low->makeKeyAndOrderFront();
    constexpr desktop::Pixel RED = 0xFF0000;
    constexpr desktop::Pixel BLUE = 0x0000FF;
    EXPECT_TRUE(world.mainLoop.runUntil([&] {
        const auto picture = desktop::capture(world.session.connection(), {0, 0, 200, 100});
        return picture.at(50, 50) == RED && picture.at(150, 50) == BLUE;
    }));
}

TEST(X11Windows, AnOrdinaryWindowIsKeptOutOfListsOfWindows)
{
    X11World world;
    const ToolkitWindow window(world.session.server().displayName(), {0, 0, 100, 100});
    world.windows.excludeFromWindowsMenu(window.id());
    const x11::Atoms& atoms = world.display.atoms();
    const auto states =
        x11::WindowInspector(world.display).identifiers(window.id(), atoms.wmState, XCB_ATOM_ATOM);
    EXPECT_EQ(states, (std::vector<std::uint32_t>{atoms.stateSkipTaskbar, atoms.stateSkipPager}));
}

TEST(X11Windows, AWindowThatIsGoneIsNoTrouble)
{
    X11World world;
    world.windows.excludeFromWindowsMenu(0xFFFFFFF);
    EXPECT_FALSE(world.display.connection().broken());
}

TEST(X11Windows, TheDesktopIsCompositedWhileSomebodyOwnsThatSelection)
{
    X11World world;
    EXPECT_FALSE(world.windows.composited());
    {
        ToolkitWindow compositor(world.session.server().displayName(), {0, 0, 1, 1});
        xcb_connection_t* connection = compositor.display().get();
        constexpr std::string_view NAME = "_NET_WM_CM_S0";
        const desktop::Reply<xcb_intern_atom_reply_t> selection(xcb_intern_atom_reply(
            connection, xcb_intern_atom(connection, 0, NAME.size(), NAME.data()), nullptr
        ));
        ASSERT_NE(selection, nullptr);
        xcb_set_selection_owner(connection, compositor.id(), selection->atom, XCB_CURRENT_TIME);
        compositor.display().sync();
        EXPECT_TRUE(world.windows.composited());
    }
    EXPECT_TRUE(world.mainLoop.runUntil([&] { return !world.windows.composited(); }));
}

} // namespace
