// The item in real panels, one of each kind, with real clicks.
#include "desktop/Desktop.h"
#include "desktop/Pixels.h"
#include "desktop/StatusPanel.h"
#include "linux/qt/QtDispatchQueues.h"
#include "linux/qt/QtTimers.h"
#include "linux/statusbar/DesktopStatusBar.h"
#include "linux/statusnotifier/StatusNotifierArea.h"
#include "linux/tray/TrayArea.h"
#include "linux/x11/X11EventMonitors.h"
#include "qt/QtEnvironment.h"
#include "qt/WaitFor.h"

#include <QApplication>
#include <QPalette>

#include <csignal>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

using desktop::Pixel;
using desktop::StatusPanel;

const testing::Environment* const APPLICATION =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QApplication>);

constexpr Pixel PICTURE = 0xff00ff;
constexpr Pixel OPAQUE = 0xffffff;

class ItemInAPanel : public testing::TestWithParam<StatusPanel::Kind>
{
protected:
    ItemInAPanel()
    {
        desktop::writeFile(
            picture(),
            R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 16 16">)"
            R"(<rect x="4" y="4" width="8" height="8" fill="#ff00ff"/></svg>)"
        );
        item->onDraw = [this] { return platform::StatusItemLook{picture(), open, "Tarvel"}; };
        item->onMouseDown = [this] { setOpen(!open); };
        item->setMenu({{"Open Tarvel", [this] { setOpen(true); }}});
        bar.onActivated = [this] { monitors.statusItemActivated(); };
        monitors.addGlobalMonitor(
            platform::EVENT_MASK_LEFT_MOUSE_DOWN,
            [this](const platform::Event& /*event*/) { ++leftPressesElsewhere; }
        );
        monitors.addGlobalMonitor(
            platform::EVENT_MASK_RIGHT_MOUSE_DOWN,
            [this](const platform::Event& /*event*/) { ++rightPressesElsewhere; }
        );
    }

    static statusbar::DesktopStatusBar::Areas
    areasOf(const std::string& busAddress, x11::X11Desktop& display)
    {
        statusbar::DesktopStatusBar::Areas areas;
        areas.push_back(std::make_unique<statusnotifier::StatusNotifierArea>(busAddress));
        areas.push_back(std::make_unique<tray::TrayArea>(display));
        return areas;
    }

    std::string picture() const { return (desk.home() / "picture.svg").string(); }

    void setOpen(bool opens)
    {
        open = opens;
        item->setNeedsDisplay();
    }

    void openPanel() { panel.emplace(desk, GetParam()); }

    void killPanel()
    {
        panel->process().signal(SIGKILL);
        panel.reset();
    }

    bool panelContains(Pixel colour)
    {
        return desktop::capture(desk.connection(), panel->firstItem()).contains(colour);
    }

    bool isSeen()
    {
        return support::waitFor([this] { return item->isShown() && panelContains(PICTURE); });
    }

    bool isGone()
    {
        return support::waitFor([this] { return !item->isShown() && !item->frame().has_value(); });
    }

    void click(std::uint8_t button = 1)
    {
        const desktop::Rectangle place = panel->firstItem();
        desk.input().click(
            static_cast<std::int16_t>(place.x + place.width / 2),
            static_cast<std::int16_t>(place.y + place.height / 2),
            button
        );
    }

    desktop::Desktop desk{desktop::Desktop::Parts{.keyring = false}};
    qt::QtDispatchQueues queues;
    qt::QtTimers timers;
    x11::X11Desktop display{
        x11::Connection::open(desk.server().displayName()), queues, [](std::string_view) {}};
    x11::X11Guard guard{
        x11::Connection::open(desk.server().displayName()), queues, [](std::string_view) {}};
    x11::X11EventMonitors monitors{display, guard, timers};
    statusbar::DesktopStatusBar bar{areasOf(desk.bus().address(), display), queues};
    std::unique_ptr<platform::StatusItem> item =
        bar.statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH);
    std::optional<StatusPanel> panel;
    bool open = false;
    int leftPressesElsewhere = 0;
    int rightPressesElsewhere = 0;
};

std::string nameOf(const testing::TestParamInfo<StatusPanel::Kind>& kind)
{
    return kind.param == StatusPanel::Kind::SystemTray ? "Tint2" : "LxqtPanel";
}

INSTANTIATE_TEST_SUITE_P(
    Panels,
    ItemInAPanel,
    testing::Values(StatusPanel::Kind::SystemTray, StatusPanel::Kind::StatusNotifier),
    nameOf
);

TEST_P(ItemInAPanel, AppearsWithThePanelAndAfterEachOfItsRestarts)
{
    EXPECT_FALSE(item->isShown());
    for (int round = 0; round < 3; ++round) {
        openPanel();
        ASSERT_TRUE(isSeen()) << round;
        killPanel();
        ASSERT_TRUE(isGone()) << round;
    }
}

TEST_P(ItemInAPanel, IsSwitchedByClicksThatAreNobodyElses)
{
    openPanel();
    ASSERT_TRUE(isSeen());
    const QColor ground = QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight);
    click();
    ASSERT_TRUE(support::waitFor([this] { return open; }));
    EXPECT_TRUE(support::waitFor([&] { return panelContains(ground.rgb() & OPAQUE); }));
    click();
    ASSERT_TRUE(support::waitFor([this] { return !open; }));
    EXPECT_TRUE(support::waitFor([&] { return !panelContains(ground.rgb() & OPAQUE); }));

    // The right button beside the item is; the left one would have been heard before.
    const desktop::Rectangle place = panel->firstItem();
    ASSERT_TRUE(support::waitFor([&] {
        desk.input().click(
            static_cast<std::int16_t>(place.x + 600), static_cast<std::int16_t>(place.y + 10), 3
        );
        return rightPressesElsewhere > 0;
    }));
    EXPECT_EQ(leftPressesElsewhere, 0);
}

TEST_P(ItemInAPanel, KnowsItsPlaceInATrayAlone)
{
    openPanel();
    ASSERT_TRUE(isSeen());
    const auto frame = item->frame();
    ASSERT_EQ(frame.has_value(), GetParam() == StatusPanel::Kind::SystemTray);
    if (frame.has_value()) {
        const desktop::Rectangle place = panel->firstItem();
        EXPECT_GE(frame->x, place.x);
        EXPECT_GE(frame->y, place.y);
        EXPECT_LE(frame->x + frame->width, place.x + place.width);
        EXPECT_LE(frame->y + frame->height, place.y + place.height);
    }
}

class ItemBetweenPanels : public ItemInAPanel
{
};

INSTANTIATE_TEST_SUITE_P(
    Panels, ItemBetweenPanels, testing::Values(StatusPanel::Kind::SystemTray), nameOf
);

TEST_P(ItemBetweenPanels, IsInOneOfThemAtATime)
{
    openPanel();
    ASSERT_TRUE(isSeen());
    std::optional<StatusPanel> better(std::in_place, desk, StatusPanel::Kind::StatusNotifier);
    EXPECT_TRUE(support::waitFor([this] { return !item->frame().has_value(); }));
    EXPECT_TRUE(item->isShown());
    better.reset();
    EXPECT_TRUE(support::waitFor([this] { return item->frame().has_value(); }));
    EXPECT_TRUE(isSeen());
}

} // namespace
