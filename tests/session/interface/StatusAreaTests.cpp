// The item in real panels of both kinds, and the popover at it.

#include "desktop/FakeSettingsPortal.h"
#include "desktop/Pixels.h"
#include "desktop/StatusPanel.h"
#include "session/interface/InterfaceTest.h"

#include <csignal>
#include <optional>

namespace agent {

using desktop::Rectangle;
using desktop::StatusPanel;

namespace {

constexpr desktop::Pixel PICTURE_ON_LIGHT_GROUND = 0x2A2B2F;
constexpr desktop::Pixel PICTURE_ON_DARK_GROUND = 0xF6F7F9;
constexpr std::uint8_t RIGHT_BUTTON = 3;

} // namespace

class StatusArea : public InterfaceTest, public ::testing::WithParamInterface<StatusPanel::Kind>
{
protected:
    void SetUp() override
    {
        InterfaceTest::SetUp();
        session->protect({});
        openPanel();
        session->startAgent();
        waitForItem();
    }

    void TearDown() override
    {
        InterfaceTest::TearDown();
        panel.reset();
    }

    void openPanel() { panel.emplace(desk(), GetParam()); }

    void waitForItem()
    {
        user->waitUntil("the item is in the panel", [this] {
            return itemNow().contains(PICTURE_ON_LIGHT_GROUND);
        });
    }

    desktop::Picture itemNow() { return desktop::capture(desk().connection(), panel->firstItem()); }

    void clickItem() { user->clickAt(panel->firstItem()); }

    /// Opens the item's menu; the entries.
    std::vector<accessibility::Node> openMenu()
    {
        const std::size_t before = desk().windows().viewableTopLevels().size();
        user->clickAt(panel->firstItem(), RIGHT_BUTTON);
        user->waitUntil("a menu opens", [&] {
            return desk().windows().viewableTopLevels().size() > before;
        });
        return user->entriesOfMenu();
    }

    /// Opens the popover and closes it; waits until the item that was drawn for this shows the one
    /// colour and not the other.
    void waitUntilRedrawnWith(desktop::Pixel colour, desktop::Pixel other)
    {
        constexpr std::size_t GROUND = 100; // pixels at least, of another colour while it is open
        open();
        user->waitUntil("the item shows that it is open", [this] {
            return itemNow().contains(PICTURE_ON_DARK_GROUND);
        });
        const desktop::Picture whileOpen = itemNow();
        user->press(desktop::KEY_ESCAPE);
        expectClosed();
        user->waitUntil("the item has the other picture", [&] {
            const desktop::Picture now = itemNow();
            return now.countDifferent(whileOpen) > GROUND && now.contains(colour) &&
                   !now.contains(other);
        });
    }

    void open()
    {
        clickItem();
        user->waitForFocusOn(screens::GATE);
    }

    void expectClosed() { user->waitForEndOf(person::window(screens::POPOVER)); }

    std::optional<StatusPanel> panel;
};

TEST_P(StatusArea, AStartByTheHelperLeavesThePopoverClosed)
{
    EXPECT_TRUE(session->waitForLine("Monitoring services started"));
    open();
    EXPECT_EQ(session->countOf("Focus"), 1U) << "it had opened before the click";
    EXPECT_EQ(session->errors().find("status area"), std::string::npos) << session->errors();
}

TEST_P(StatusArea, AClickOpensThePopoverAtTheItemAndASecondOneClosesIt)
{
    open();
    const Rectangle popover = user->placeOf(person::window(screens::POPOVER));
    EXPECT_GE(popover.x, 0);
    EXPECT_LT(popover.x, panel->firstItem().x + panel->firstItem().width);
    EXPECT_LE(popover.y + popover.height, panel->firstItem().y);
    EXPECT_GE(popover.y + popover.height, panel->firstItem().y - 2 * panel->firstItem().height);

    clickItem();
    expectClosed();
}

TEST_P(StatusArea, ThePopoverClosesWhereTheUserGoesElsewhere)
{
    open();
    user->press(desktop::KEY_ESCAPE);
    expectClosed();

    open();
    user->clickAt({900, 100, 2, 2});
    expectClosed();

    open();
    addApplication("garden", "Garden");
    const desktop::ChildProcess garden = startApplication("garden");
    expectClosed();
}

TEST_P(StatusArea, ThePopoverHasTheKeyboardAtOnceWhereAnotherOwnWindowHadIt)
{
    open();
    unlock();
    choose(screens::HELP_AND_SUPPORT);
    for (int opening = 0; opening < 10; ++opening) {
        user->waitForFocusOn(screens::HELP_PAGE);
        clickItem();
        user->waitForFocusOn(screens::GATE);

        user->type(PASSWORD); // it would be elsewhere if the keyboard went back
        user->press(desktop::KEY_RETURN);
        user->waitFor(screens::CONTENT);

        user->press(desktop::KEY_ESCAPE);
        expectClosed();
    }
}

TEST_P(StatusArea, TheMenuOffersNothingButOpeningWhichAsksForThePassword)
{
    const auto entries = openMenu();
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries.front().name(), "Open Tarvel");

    user->clickAt(entries.front().place());

    user->waitForFocusOn(screens::GATE);
    EXPECT_FALSE(user->sees(screens::CONTENT));
    unlock();
}

TEST_P(StatusArea, ThePictureFollowsTheAppearanceOfTheDesktop)
{
    using Appearance = desktop::FakeSettingsPortal::Appearance;
    const desktop::FakeSettingsPortal portal(desk().bus().address());

    portal.prefer(Appearance::Dark);
    waitUntilRedrawnWith(PICTURE_ON_DARK_GROUND, PICTURE_ON_LIGHT_GROUND);

    portal.prefer(Appearance::Light);
    waitUntilRedrawnWith(PICTURE_ON_LIGHT_GROUND, PICTURE_ON_DARK_GROUND);
}

TEST_P(StatusArea, TheItemComesBackWithANewPanel)
{
    panel->process().signal(SIGKILL);
    panel.reset();

    panel.emplace(desk(), GetParam());
    waitForItem();

    open();
    unlock();
}

INSTANTIATE_TEST_SUITE_P(
    Panels,
    StatusArea,
    testing::Values(StatusPanel::Kind::SystemTray, StatusPanel::Kind::StatusNotifier),
    [](const testing::TestParamInfo<StatusPanel::Kind>& panel) {
        return panel.param == StatusPanel::Kind::SystemTray ? "SystemTray" : "StatusNotifier";
    }
);

} // namespace agent
