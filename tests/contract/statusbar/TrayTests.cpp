// The icon in the system tray: its place, its ground, its menu.
#include "TestPicture.h"
#include "Worlds.h"
#include "desktop/Pixels.h"

#include <QPalette>
#include <QTextDocumentFragment>
#include <QToolTip>

#include <cmath>

#include <gtest/gtest.h>

namespace {

using desktop::FakeTray;
using desktop::Pixel;

class ItemInATray : public testing::Test
{
protected:
    void showItem(const FakeTray::Options& options = {})
    {
        world.areaComes(options);
        item = world.bar().statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH);
        item->onDraw = [this] { return look; };
        item->onMouseDown = [this] { ++clicks; };
        item->setMenu({{"Open & look", [] {}}});
    }

    /// Of a place within the item.
    Pixel pixel(int x, int y)
    {
        const auto frame = item->frame();
        if (!frame.has_value()) {
            return 0;
        }
        const desktop::Rectangle place{
            static_cast<std::int16_t>(frame->x),
            static_cast<std::int16_t>(frame->y),
            static_cast<std::uint16_t>(frame->width),
            static_cast<std::uint16_t>(frame->height)};
        return desktop::capture(world.desk.connection(), place).at(place.x + x, place.y + y);
    }

    bool soonIsThere()
    {
        return world.soon([&] { return item->frame().has_value() && world.isViewable(); });
    }

    void pointAtItem()
    {
        const platform::Rect frame = item->frame().value_or(platform::Rect{});
        world.desk.input().movePointer(
            static_cast<std::int16_t>(frame.x + frame.width / 2),
            static_cast<std::int16_t>(frame.y + frame.height / 2)
        );
    }

    /// As it is read, empty without one.
    static QString shownTip()
    {
        return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
    }

    void pointElsewhere() { world.desk.input().movePointer(500, 400); }

    TrayWorld world;
    TestPicture picture;
    platform::StatusItemLook look{picture.path(), false, "Tarvel"};
    std::unique_ptr<platform::StatusItem> item;
    int clicks = 0;
};

/// Half of red over the colour.
bool isRedOver(Pixel ground, Pixel seen)
{
    constexpr Pixel RED = 0xff0000;
    const auto partsAreClose = [&](int shift) {
        const auto part = [shift](Pixel colour) {
            return static_cast<int>(colour >> shift & 0xffU);
        };
        return std::abs(part(seen) - (part(RED) + part(ground)) / 2) <= 2;
    };
    return partsAreClose(16) && partsAreClose(8) && partsAreClose(0);
}

TEST_F(ItemInATray, IsShownAtOnceWhereThereWasATrayBefore)
{
    const FakeTray before(world.desk.server().displayName());
    statusbar::DesktopStatusBar bar(only<::tray::TrayArea>(world.display), world.queues);
    EXPECT_TRUE(bar.statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH)->isShown());
}

TEST_F(ItemInATray, KnowsItsPlace)
{
    showItem({.place = {700, 300, 24, 24}});
    ASSERT_TRUE(soonIsThere());
    EXPECT_EQ(item->frame(), (platform::Rect{700, 300, 24, 24}));
    EXPECT_EQ(world.desk.connection().textProperty(world.tray->icon(), "_NET_WM_NAME"), "Tarvel");
}

TEST_F(ItemInATray, IsDrawnOnTheGroundOfTheTray)
{
    showItem();
    ASSERT_TRUE(soonIsThere());
    EXPECT_TRUE(world.soon([&] { return isRedOver(FakeTray::GROUND, pixel(4, 12)); }));
    EXPECT_EQ(pixel(20, 12), FakeTray::GROUND);
    EXPECT_EQ(world.tray->depthOfIcon(), world.desk.connection().screen().root_depth);
}

TEST_F(ItemInATray, HasAnAlphaChannelWhereTheTrayWantsOne)
{
    showItem({.transparentIcons = true});
    ASSERT_TRUE(soonIsThere());
    EXPECT_EQ(world.tray->depthOfIcon(), 32);
    // Without a compositor its colours are seen as they are: premultiplied, on nothing.
    EXPECT_TRUE(world.soon([&] { return isRedOver(0, pixel(4, 12)); }));
    EXPECT_EQ(pixel(20, 12), 0U);
}

TEST_F(ItemInATray, IsDrawnAgainAsItLooksNowWithAGroundWhileHighlighted)
{
    showItem();
    ASSERT_TRUE(soonIsThere());
    look.highlighted = true;
    item->setNeedsDisplay();
    const QColor colour = QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight);
    constexpr Pixel OPAQUE = 0xffffff;
    EXPECT_TRUE(world.soon([&] { return pixel(20, 12) == (colour.rgb() & OPAQUE); }));
    look.highlighted = false;
    item->setNeedsDisplay();
    EXPECT_TRUE(world.soon([&] { return pixel(20, 12) == FakeTray::GROUND; }));
}

TEST_F(ItemInATray, FollowsTheSizeThatTheTrayGives)
{
    showItem();
    ASSERT_TRUE(soonIsThere());
    world.tray->resize(48);
    EXPECT_TRUE(world.soon([&] { return isRedOver(FakeTray::GROUND, pixel(20, 38)); }));
    EXPECT_EQ(pixel(30, 24), FakeTray::GROUND);
}

TEST_F(ItemInATray, OpensItsMenuWithTheRightButton)
{
    showItem();
    world.press(TrayWorld::RIGHT);
    ASSERT_TRUE(support::waitFor([] { return QApplication::activePopupWidget() != nullptr; }));
    QWidget* menu = QApplication::activePopupWidget();
    EXPECT_EQ(menu->actions().front()->text(), "Open && look");
    menu->close();
    EXPECT_EQ(clicks, 0);
}

TEST_F(ItemInATray, ShowsItsTitleWhereThePointerRestsUntilItLeaves)
{
    showItem();
    ASSERT_TRUE(soonIsThere());
    EXPECT_FALSE(QToolTip::isVisible());
    pointAtItem();
    ASSERT_TRUE(world.soon([] { return QToolTip::isVisible(); }));
    EXPECT_EQ(shownTip(), "Tarvel");
    pointElsewhere();
    EXPECT_TRUE(world.soon([] { return !QToolTip::isVisible(); }));
}

TEST_F(ItemInATray, APressTakesItsTipAwayUntilThePointerComesAgain)
{
    showItem();
    ASSERT_TRUE(soonIsThere());
    pointAtItem();
    ASSERT_TRUE(world.soon([] { return QToolTip::isVisible(); }));
    world.press(TrayWorld::LEFT);
    EXPECT_TRUE(world.soon([&] { return clicks == 1 && !QToolTip::isVisible(); }));
    pointElsewhere();
    look.title = "Another <title>";
    item->setNeedsDisplay();
    pointAtItem();
    ASSERT_TRUE(world.soon([] { return QToolTip::isVisible(); }));
    EXPECT_EQ(shownTip(), "Another <title>");
}

TEST_F(ItemInATray, TakesItsTipAlong)
{
    showItem();
    ASSERT_TRUE(soonIsThere());
    pointAtItem();
    ASSERT_TRUE(world.soon([] { return QToolTip::isVisible(); }));
    item.reset();
    EXPECT_TRUE(world.soon([] { return !QToolTip::isVisible(); }));
}

TEST_F(ItemInATray, IsActivatedWithTheMiddleButtonTooAndNotByTheWheel)
{
    showItem();
    constexpr std::uint8_t MIDDLE = 2;
    constexpr std::uint8_t WHEEL = 4;
    world.press(WHEEL);
    world.press(MIDDLE);
    ASSERT_TRUE(world.soon([&] { return clicks > 0; }));
    EXPECT_EQ(clicks, 1);
    world.press(TrayWorld::LEFT);
    ASSERT_TRUE(world.soon([&] { return clicks > 1; }));
    EXPECT_EQ(clicks, 2);
}

TEST_F(ItemInATray, IsNotShownAnyMoreWhenTheTrayPutsItOutAndTakesItsWindowBack)
{
    showItem();
    ASSERT_TRUE(soonIsThere());
    world.tray->letGo();
    EXPECT_TRUE(world.soon([&] { return !item->isShown(); }));
    EXPECT_TRUE(world.soon([&] { return world.tray->icon() == XCB_NONE; }));
    EXPECT_EQ(item->frame(), std::nullopt);
    EXPECT_EQ(world.tray->requests(), 1); // it is not asked again
}

TEST_F(ItemInATray, MovesToATrayThatReplacesAnother)
{
    showItem();
    ASSERT_TRUE(soonIsThere());
    FakeTray other(world.desk.server().displayName(), {.place = {400, 200, 24, 24}});
    EXPECT_TRUE(world.soon([&] {
        other.icon();
        return item->frame() == platform::Rect{400, 200, 24, 24};
    }));
    EXPECT_TRUE(world.soon([&] { return world.tray->icon() == XCB_NONE; }));
}

/// Both kinds of status areas on one desktop.
class ItemOnADesktopWithBoth : public testing::Test
{
protected:
    static statusbar::DesktopStatusBar::Areas
    both(const std::string& busAddress, x11::X11Desktop& display)
    {
        auto areas = only<statusnotifier::StatusNotifierArea>(busAddress);
        areas.push_back(std::make_unique<tray::TrayArea>(display));
        return areas;
    }

    bool isInTray() { return world.tray->icon() != XCB_NONE; }

    bool isOnBus()
    {
        const auto names = notifier.watcher->registered();
        return !names.empty() && notifier.bus.hasOwner(names.back());
    }

    NotifierWorld notifier;
    TrayWorld world;
    statusbar::DesktopStatusBar bar{both(notifier.bus.address(), world.display), world.queues};
};

TEST_F(ItemOnADesktopWithBoth, IsShownByTheHostAloneWhileThereIsOne)
{
    world.areaComes();
    const auto item = bar.statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH);
    ASSERT_TRUE(world.soon([&] { return isInTray(); }));
    for (int round = 0; round < 2; ++round) {
        notifier.areaComes();
        ASSERT_TRUE(world.soon([&] { return isOnBus(); }));
        EXPECT_TRUE(world.soon([&] { return !isInTray(); }));
        EXPECT_EQ(item->frame(), std::nullopt);
        notifier.areaGoes();
        ASSERT_TRUE(world.soon([&] { return isInTray(); }));
        EXPECT_TRUE(item->isShown());
    }
}

TEST_F(ItemOnADesktopWithBoth, NeverAsksATrayWhileThereIsAHost)
{
    notifier.areaComes();
    world.areaComes();
    statusbar::DesktopStatusBar late(both(notifier.bus.address(), world.display), world.queues);
    const auto item = late.statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH);
    ASSERT_TRUE(world.soon([&] { return isOnBus(); }));
    world.areaGoes();
    world.areaComes();
    bool asked = false;
    item->onMouseDown = [&] { asked = true; };
    notifier.client().call(ItemClient::ITEM, "Activate", {1, 2}); // everything before it is done
    ASSERT_TRUE(world.soon([&] { return asked; }));
    EXPECT_EQ(world.tray->requests(), 0);
}

TEST_F(ItemOnADesktopWithBoth, ActivationIsToldToTheBarFirst)
{
    notifier.areaComes();
    const auto item = bar.statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH);
    std::string order;
    bar.onActivated = [&] { order += "bar "; };
    item->onMouseDown = [&] { order += "item"; };
    notifier.client().call(ItemClient::ITEM, "Activate", {1, 2});
    EXPECT_TRUE(support::waitFor([&] { return order == "bar item"; })) << order;
}

TEST_F(ItemOnADesktopWithBoth, AChoiceInTheMenuIsToldToTheBarFirst)
{
    notifier.areaComes();
    const auto item = bar.statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH);
    std::string order;
    bar.onActivated = [&] { order += "bar "; };
    item->setMenu({{"Open Tarvel", [&] { order += "entry"; }}});
    notifier.choose(0);
    EXPECT_TRUE(support::waitFor([&] { return order == "bar entry"; })) << order;
}

} // namespace
