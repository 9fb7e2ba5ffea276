// What every implementation of the screens promises, asked of the fake and of a real display.
#include "desktop/MainLoop.h"
#include "desktop/PrivateXServer.h"
#include "fakes/FakeScreens.h"
#include "linux/x11/X11Screens.h"
#include "platform/Port.h"

#include <csignal>
#include <memory>
#include <string_view>

#include <gtest/gtest.h>

namespace {

using Frames = std::vector<desktop::Rectangle>;

platform::Rect frameOf(const desktop::Rectangle& rectangle)
{
    return {rectangle.x, rectangle.y, rectangle.width, rectangle.height};
}

/// Screens whose arrangement the test decides.
class World : public platform::Port
{
public:
    /// The first one is the main one.
    virtual void arrange(const Frames& frames) = 0;
    virtual void loseDesktop() = 0;
    virtual platform::Screens& screens() = 0;
    virtual bool waitUntil(const std::function<bool()>& condition) = 0;
};

class FakeWorld final : public World
{
public:
    void arrange(const Frames& frames) override
    {
        std::vector<platform::Screen> list;
        for (const desktop::Rectangle& frame : frames) {
            list.push_back({"screen-" + std::to_string(list.size()), frameOf(frame)});
        }
        fake.arrange(list);
    }

    void loseDesktop() override { fake.list.reset(); }

    platform::Screens& screens() override { return fake; }

    bool waitUntil(const std::function<bool()>& condition) override { return condition(); }

private:
    fakes::FakeScreens fake;
};

class RealWorld final : public World
{
public:
    void arrange(const Frames& frames) override { server.setScreens(frames); }

    void loseDesktop() override
    {
        kill(server.processId(), SIGKILL);
        ASSERT_TRUE(mainLoop.runUntil([this] { return display.connection().broken(); }));
    }

    platform::Screens& screens() override { return real; }

    bool waitUntil(const std::function<bool()>& condition) override
    {
        return mainLoop.runUntil(condition);
    }

private:
    desktop::PrivateXServer server;
    desktop::MainLoop mainLoop;
    x11::X11Desktop display{
        x11::Connection::open(server.displayName()), mainLoop, [](std::string_view /*line*/) {}};
    x11::X11Screens real{display};
};

template <typename W> class ScreensContract : public testing::Test
{
protected:
    W world;
};

using Worlds = testing::Types<FakeWorld, RealWorld>;
TYPED_TEST_SUITE(ScreensContract, Worlds);

TYPED_TEST(ScreensContract, ListsEveryScreenWithItsFrame)
{
    const Frames frames{{0, 0, 1280, 720}, {1280, 0, 1024, 768}};
    this->world.arrange(frames);
    const auto screens = this->world.screens().screens();
    ASSERT_TRUE(screens.has_value());
    ASSERT_EQ(2U, screens->size());
    EXPECT_EQ(frameOf(frames[0]), screens->at(0).frame);
    EXPECT_EQ(frameOf(frames[1]), screens->at(1).frame);
    EXPECT_NE(screens->at(0).identifier, screens->at(1).identifier);
}

TYPED_TEST(ScreensContract, TheMainScreenIsOneOfThem)
{
    this->world.arrange({{0, 0, 1280, 720}, {1280, 0, 1280, 720}});
    const auto main = this->world.screens().mainScreen();
    ASSERT_TRUE(main.has_value());
    EXPECT_EQ(this->world.screens().screens()->at(0), *main);
}

TYPED_TEST(ScreensContract, FollowsAddedAndRemovedScreens)
{
    this->world.arrange({{0, 0, 1280, 720}});
    EXPECT_EQ(1U, this->world.screens().screens()->size());
    const platform::Screen first = *this->world.screens().mainScreen();
    this->world.arrange({{0, 0, 1280, 720}, {1280, 0, 640, 480}, {1920, 0, 640, 480}});
    EXPECT_EQ(3U, this->world.screens().screens()->size());
    this->world.arrange({{0, 0, 1280, 720}});
    EXPECT_EQ(1U, this->world.screens().screens()->size());
    EXPECT_EQ(first, *this->world.screens().mainScreen());
}

TYPED_TEST(ScreensContract, TellsOnceOfScreensThatChangePlaces)
{
    const Frames frames{{0, 0, 1280, 720}, {1280, 0, 1280, 720}};
    this->world.arrange(frames);
    const auto arranged = [this, &frames] {
        return this->world.screens().screens()->at(1).frame == frameOf(frames[1]);
    };
    ASSERT_TRUE(this->world.waitUntil(arranged));
    int told = 0;
    this->world.screens().observe([&told] { ++told; });

    this->world.arrange({frames[1], frames[0]});

    EXPECT_TRUE(this->world.waitUntil([&told] { return told > 0; }));
    EXPECT_EQ(frameOf(frames[1]), this->world.screens().mainScreen()->frame);
    this->world.arrange(frames);
    EXPECT_TRUE(this->world.waitUntil([&told] { return told > 1; }));
    EXPECT_EQ(2, told);
}

TYPED_TEST(ScreensContract, TellsOfScreensThatComeAndGo)
{
    std::size_t seen = 0;
    this->world.screens().observe([this, &seen] { seen = this->world.screens().screens()->size(); }
    );
    this->world.arrange({{0, 0, 1280, 720}, {1280, 0, 640, 480}, {1920, 0, 640, 480}});
    EXPECT_TRUE(this->world.waitUntil([&seen] { return seen == 3; }));
    this->world.arrange({{0, 0, 1280, 720}});
    EXPECT_TRUE(this->world.waitUntil([&seen] { return seen == 1; }));
}

TYPED_TEST(ScreensContract, AnEmptyHandlerTakesTheObserverAway)
{
    bool told = false;
    int others = 0;
    this->world.screens().observe([&told] { told = true; });
    this->world.screens().observe(nullptr);
    this->world.arrange({{0, 0, 1280, 720}});
    this->world.screens().observe([&others] { ++others; });
    this->world.arrange({{0, 0, 640, 480}, {640, 0, 640, 480}});
    EXPECT_TRUE(this->world.waitUntil([&others] { return others > 0; }));
    EXPECT_FALSE(told);
}

TYPED_TEST(ScreensContract, ALostDesktopHasNoScreens)
{
    this->world.loseDesktop();
    EXPECT_FALSE(this->world.screens().screens().has_value());
    EXPECT_FALSE(this->world.screens().mainScreen().has_value());
}

} // namespace
