// The item in real panels of both kinds, and the popover at it.

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
            return desktop::capture(desk().connection(), panel->firstItem())
                .contains(PICTURE_ON_LIGHT_GROUND);
        });
    }

    void clickItem() { user->clickAt(panel->firstItem()); }

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
    EXPECT_FALSE(user->sees(person::window(screens::POPOVER)));
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
