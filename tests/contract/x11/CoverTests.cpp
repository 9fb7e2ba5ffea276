// What a person sees while the screens are covered, whatever other programs do.
#include "ForeignWindows.h"
#include "X11World.h"
#include "desktop/Pixels.h"
#include "desktop/Wait.h"

#include <chrono>

#include <gtest/gtest.h>

namespace {

using Clock = std::chrono::steady_clock;

class Cover : public testing::Test
{
protected:
    bool coveredSoon()
    {
        return world.mainLoop.runUntil([this] { return world.allCovered(); });
    }

    X11World world;
};

TEST_F(Cover, CoversEveryPixelOfEveryScreen)
{
    ASSERT_FALSE(world.allCovered());
    world.application.setPresentationOptions(X11World::LOCKED);
    const desktop::Rectangle lastPixel{2559, 719, 1, 1};
    ASSERT_TRUE(desktop::waitUntil(
        [&] {
            return desktop::capture(world.session.connection(), lastPixel)
                .isAllOf(desktop::LOCK_COLOUR);
        },
        std::chrono::seconds(20)
    ));
    EXPECT_TRUE(world.allCovered()); // one window, painted by the server in one go
}

TEST_F(Cover, DefaultOptionsUncoverOneTurnLater)
{
    world.application.setPresentationOptions(X11World::LOCKED);
    ASSERT_TRUE(coveredSoon());
    ASSERT_TRUE(world.capturedSoon());
    world.application.setPresentationOptions(platform::PRESENTATION_DEFAULT);
    ASSERT_TRUE(world.mainLoop.runUntil([this] { return !world.allCovered(); }));
    EXPECT_TRUE(world.mainLoop.runUntil([this] { return !world.guard.captured(); }));
}

TEST_F(Cover, StaysWhenItIsAskedForAgainInTheSameTurn)
{
    world.application.setPresentationOptions(X11World::LOCKED);
    ASSERT_TRUE(coveredSoon());
    world.application.setPresentationOptions(platform::PRESENTATION_DEFAULT);
    world.application.setPresentationOptions(X11World::LOCKED);
    bool turned = false;
    world.mainLoop.asyncMain([&] { turned = true; });
    ASSERT_TRUE(world.mainLoop.runUntil([&] { return turned; }));
    // A later command of the guard is done, so an uncovering before it would have been done too.
    const unsigned long before = world.guard.raises();
    world.guard.cover();
    ASSERT_TRUE(world.mainLoop.runUntil([&] { return world.guard.raises() > before; }));
    EXPECT_TRUE(world.allCovered());
    EXPECT_TRUE(world.guard.captured());
}

TEST_F(Cover, LiesOverTwoHundredForeignWindowsThatComeUpDuringALock)
{
    world.application.setPresentationOptions(X11World::LOCKED);
    ASSERT_TRUE(coveredSoon());
    ForeignWindows foreign(world.session.server().displayName());
    for (int count = 0; count < 200; ++count) {
        foreign.mapAndRaise(foreign.create(count * 10, count * 3));
    }
    EXPECT_TRUE(coveredSoon());
    const bool stays =
        desktop::holdsFor([this] { return world.allCovered(); }, std::chrono::milliseconds(200));
    EXPECT_TRUE(stays);
}

TEST_F(Cover, ComesBackUpWhenAnotherProgramPutsItDown)
{
    world.application.setPresentationOptions(X11World::LOCKED);
    ForeignWindows foreign(world.session.server().displayName());
    foreign.mapAndRaise(foreign.create(100, 100));
    ASSERT_TRUE(coveredSoon());
    const xcb_window_t top = world.session.windows().viewableTopLevels().back();
    foreign.lower(top);
    EXPECT_TRUE(coveredSoon());
    EXPECT_EQ(top, world.session.windows().viewableTopLevels().back());
}

TEST_F(Cover, AProgramThatFightsForTheTopDoesNotKeepTheGuardBusy)
{
    world.application.setPresentationOptions(X11World::LOCKED);
    ASSERT_TRUE(coveredSoon());
    ForeignWindows foreign(world.session.server().displayName());
    const xcb_window_t window = foreign.create(100, 100);
    const unsigned long before = world.guard.raises();
    const auto begin = Clock::now();
    const auto fight = std::chrono::seconds(1);
    while (Clock::now() - begin < fight) {
        foreign.mapAndRaise(window);
    }
    const auto elapsed = Clock::now() - begin;
    const auto most = x11::RaiseLimiter::BURST + elapsed / x11::RaiseLimiter::INTERVAL + 1;
    EXPECT_LE(world.guard.raises() - before, static_cast<unsigned long>(most));
    EXPECT_TRUE(coveredSoon()); // the last raise is the guard's
}

TEST_F(Cover, DoesNothingWhileNothingHappens)
{
    world.application.setPresentationOptions(X11World::LOCKED);
    ASSERT_TRUE(coveredSoon());
    const unsigned long before = world.guard.raises();
    EXPECT_TRUE(desktop::holdsFor(
        [&] { return world.guard.raises() == before; }, std::chrono::milliseconds(300)
    ));
}

TEST_F(Cover, FollowsScreensThatAreAddedAndRemovedAndResized)
{
    world.application.setPresentationOptions(X11World::LOCKED);
    ASSERT_TRUE(coveredSoon());
    const std::vector<std::vector<desktop::Rectangle>> arrangements = {
        {{0, 0, 1280, 720}, {1280, 0, 1280, 720}, {2560, 0, 1024, 768}},
        {{0, 0, 800, 600}},
        {{0, 0, 3840, 2160}},
        {{0, 0, 1280, 720}, {0, 720, 1280, 1024}},
    };
    for (const auto& arrangement : arrangements) {
        world.session.server().setScreens(arrangement);
        EXPECT_TRUE(coveredSoon()) << arrangement.size() << " screens";
    }
}

} // namespace
