#include "desktop/Desktop.h"
#include "desktop/Failure.h"
#include "desktop/ForeignClient.h"
#include "desktop/Framebuffer.h"
#include "desktop/Pixels.h"
#include "desktop/Wait.h"

#include <csignal>
#include <string>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

constexpr auto ACCOUNT = "com.quorvent.Tarvel (Password)";
constexpr desktop::Rectangle WHOLE{0, 0, 2560, 720};

desktop::Desktop::Parts serverOnly()
{
    return {.windowManager = false, .bus = false, .keyring = false};
}

} // namespace

TEST(Desktop, TypedTextReachesARealTerminal)
{
    desktop::Desktop desk;
    const auto written = desk.home() / "typed";
    desktop::ChildProcess xterm =
        desk.start({"xterm", "-e", "sh", "-c", "head -n 1 > " + written.string()});

    ASSERT_TRUE(
        desktop::waitUntil([&] { return desk.windows().activeProcess() == xterm.id(); }, 20s)
    );
    EXPECT_EQ(desk.windows().classOf(desk.windows().active()), "XTerm");
    desk.input().type("Hello, World_1!");
    desk.input().press(desktop::KEY_RETURN);

    EXPECT_TRUE(xterm.waitForEnd(20s).has_value());
    EXPECT_EQ(desktop::readFile(written), "Hello, World_1!\n");
}

TEST(Desktop, AnItemOfTheKeyringIsFoundAgain)
{
    const desktop::Desktop::Parts parts{.windowManager = false};
    desktop::Desktop desk(parts);

    const desktop::KeyringItems& items = desk.keyring().items();
    EXPECT_EQ(items.lookUp(ACCOUNT), std::nullopt);
    items.store(ACCOUNT, "geheim äöü");
    EXPECT_EQ(items.lookUp(ACCOUNT), "geheim äöü");
}

TEST(Desktop, AKeyringThatDiedSaysSo)
{
    const desktop::Desktop::Parts parts{.windowManager = false};
    desktop::Desktop desk(parts);
    desk.keyring().process().signal(SIGUSR2);
    ASSERT_TRUE(desk.keyring().process().waitForEnd(10s).has_value());
    EXPECT_THROW(static_cast<void>(desk.keyring().items()), desktop::Failure);

    testing::internal::CaptureStderr();
    desk.stopKeyring();

    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("gnome-keyring-daemon was ended by signal"), std::string::npos) << said;
}

TEST(Desktop, AKeyringThatWasAskedToEndSaysNothing)
{
    const desktop::Desktop::Parts parts{.windowManager = false};
    desktop::Desktop desk(parts);

    testing::internal::CaptureStderr();
    desk.stopKeyring();

    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Desktop, TheBusKnowsWhoIsOnIt)
{
    const desktop::Desktop::Parts parts{.windowManager = false};
    desktop::Desktop desk(parts);
    EXPECT_TRUE(desk.bus().hasOwner("org.freedesktop.secrets"));

    desk.stopKeyring();

    EXPECT_TRUE(
        desktop::waitUntil([&] { return !desk.bus().hasOwner("org.freedesktop.secrets"); }, 10s)
    );
}

TEST(Desktop, ScreensAreAddedRemovedAndResized)
{
    desktop::Desktop desk(serverOnly());
    const auto rootWidth = [&] { return desk.windows().placeOf(desk.connection().root()).width; };
    ASSERT_EQ(desk.server().screens().size(), 2U);

    desk.server().setScreens({{0, 0, 1280, 720}, {1280, 0, 800, 600}, {2080, 0, 800, 600}});
    EXPECT_EQ(rootWidth(), 2880);
    desk.server().setScreens(desktop::PrivateXServer::twoScreens());
    EXPECT_EQ(rootWidth(), 2560);
}

TEST(Desktop, PicturesShowWhatIsOnTheScreensAndNothingElse)
{
    desktop::Desktop desk(serverOnly());
    const auto before = desktop::capture(desk.connection(), WHOLE);
    EXPECT_FALSE(before.contains(desktop::LOCK_COLOUR));

    desktop::showForeignWindow(desk.connection(), {100, 50, 30, 20}, desktop::LOCK_COLOUR);

    const auto picture = desktop::capture(desk.connection(), WHOLE);
    EXPECT_EQ(picture.at(100, 50), desktop::LOCK_COLOUR);
}

TEST(Desktop, PicturesCountThePixelsOfOtherColours)
{
    desktop::Desktop desk(serverOnly());
    desktop::showForeignWindow(desk.connection(), {100, 50, 30, 20}, desktop::LOCK_COLOUR);

    const auto whole = desktop::capture(desk.connection(), WHOLE);
    EXPECT_EQ(whole.countOthers(desktop::LOCK_COLOUR), 2560U * 720U - 600U);
    EXPECT_TRUE(desktop::capture(desk.connection(), {100, 50, 30, 20}).isAllOf(desktop::LOCK_COLOUR)
    );
    const auto edge = desktop::capture(desk.connection(), {90, 50, 40, 20});
    EXPECT_EQ(edge.countOthers(desktop::LOCK_COLOUR, {80, 0, 20, 720}), 0U);
    EXPECT_EQ(edge.countOthers(desktop::LOCK_COLOUR, {80, 0, 19, 720}), 20U);
}

TEST(Desktop, PicturesAreSavedAsPng)
{
    desktop::Desktop desk(serverOnly());
    const auto file = desk.folder() / "picture.png";

    desktop::capture(desk.connection(), WHOLE).savePng(file);

    EXPECT_EQ(desktop::readFile(file).substr(1, 3), "PNG");
}

TEST(Desktop, TheFramebufferShowsWhatPicturesShow)
{
    desktop::Desktop::Parts parts = serverOnly();
    parts.framebuffer = true;
    desktop::Desktop desk(parts);
    const desktop::Framebuffer framebuffer(desk.framebufferFile());
    EXPECT_EQ(framebuffer.row(60)[1400] & 0xFFFFFF, 0U);

    desktop::showForeignWindow(desk.connection(), {1400, 50, 30, 20}, desktop::LOCK_COLOUR);

    EXPECT_EQ(framebuffer.row(60)[1400] & 0xFFFFFF, desktop::LOCK_COLOUR);
    EXPECT_EQ(framebuffer.row(69)[1429] & 0xFFFFFF, desktop::LOCK_COLOUR);
    EXPECT_EQ(framebuffer.row(70)[1430] & 0xFFFFFF, 0U);
}
