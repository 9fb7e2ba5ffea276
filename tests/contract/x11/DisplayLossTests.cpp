// A display that is not there, or goes away in mid-run.
#include "X11World.h"

#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

TEST(DisplayLoss, ADisplayThatIsNotThereCannotBeOpened)
{
    EXPECT_EQ(nullptr, x11::Connection::open("/nonexistent:7"));
}

TEST(DisplayLoss, IsReportedOnceAConnectionAndEverythingElseDoesNothing)
{
    X11World world;
    world.windowSystem.start();
    world.application.setPresentationOptions(X11World::LOCKED);
    ASSERT_TRUE(world.capturedSoon());
    const auto window = world.windows.createWindow(world.lockAttributes({0, 0, 100, 100}));

    kill(world.session.server().processId(), SIGKILL);
    ASSERT_TRUE(world.mainLoop.runUntil([&] { return world.reports.count() >= 2; }));
    EXPECT_THAT(
        world.reports.all(),
        testing::UnorderedElementsAre(
            "the lock's connection to the X display is lost",
            "the connection to the X display is lost"
        )
    );
    EXPECT_FALSE(world.guard.captured());

    window->makeKeyAndOrderFront();
    window->close();
    world.application.setPresentationOptions(platform::PRESENTATION_DEFAULT);
    world.application.activate(true);
    EXPECT_FALSE(world.windowSystem.bringForward(1));
    EXPECT_FALSE(world.screens.screens().has_value());
    world.eventMonitors.removeMonitor(world.eventMonitors.addLocalMonitor(
        platform::EVENT_MASK_FLAGS_CHANGED, [](const platform::Event& /*event*/) {}
    ));
}

/// Ends the client as somebody does who asks the server to, and leaves the display as it is.
void cut(X11World& world, const x11::Connection& connection)
{
    desktop::XConnection& killer = world.session.connection();
    xcb_kill_client(killer.get(), xcb_get_setup(connection.get())->resource_id_base);
    killer.sync();
}

TEST(DisplayLoss, AGuardWhoseConnectionAloneIsCutSaysSoOnce)
{
    X11World world;
    int lost = 0;
    world.guard.onLost = [&lost] { ++lost; };
    world.application.setPresentationOptions(X11World::LOCKED);
    ASSERT_TRUE(world.capturedSoon());

    cut(world, world.guard.connection());

    ASSERT_TRUE(world.mainLoop.runUntil([&lost] { return lost > 0; }));
    world.application.setPresentationOptions(platform::PRESENTATION_DEFAULT);
    world.application.setPresentationOptions(X11World::LOCKED);
    EXPECT_TRUE(world.mainLoop.runsDry());
    EXPECT_EQ(lost, 1);
    EXPECT_TRUE(world.screens.screens().has_value());
}

TEST(DisplayLoss, ADesktopWhoseConnectionAloneIsCutSaysSoOnce)
{
    X11World world;
    int lost = 0;
    world.display.onLost = [&lost] { ++lost; };

    cut(world, world.display.connection());

    ASSERT_TRUE(world.mainLoop.runUntil([&lost] { return lost > 0; }));
    EXPECT_FALSE(world.screens.screens().has_value());
    EXPECT_TRUE(world.mainLoop.runsDry());
    EXPECT_EQ(lost, 1);
}

} // namespace
