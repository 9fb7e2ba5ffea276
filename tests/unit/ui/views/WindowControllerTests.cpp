#include "platform/Fatal.h"
#include "qt/WaitFor.h"
#include "ui/views/Outlet.h"
#include "ui/views/Theme.h"
#include "ui/views/ViewController.h"
#include "ui/views/WindowController.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Window : ui::WindowController
{
    std::unique_ptr<ui::PanelWindow> loadWindow() override
    {
        steps.emplace_back("load");
        return isMissing ? nullptr : std::make_unique<ui::PanelWindow>();
    }

    void windowDidLoad() override
    {
        steps.emplace_back(isWindowLoaded() ? "did load" : "too early");
        window().resize(200, 100);
    }

    std::vector<std::string> steps;
    bool isMissing = false;
};

struct View : ui::ViewController
{
    std::unique_ptr<QWidget> loadView() override
    {
        ++loads;
        return isMissing ? nullptr : std::make_unique<QWidget>();
    }

    void viewDidLoad() override { ++didLoads; }

    int loads = 0;
    int didLoads = 0;
    bool isMissing = false;
};

using Steps = std::vector<std::string>;

} // namespace

TEST(WindowController, LoadsItsWindowOnceWhenItIsFirstAskedFor)
{
    Window controller;
    EXPECT_FALSE(controller.isWindowLoaded());
    ui::PanelWindow* const window = &controller.window();
    EXPECT_EQ(&controller.window(), window);
    EXPECT_EQ(controller.steps, (Steps{"load", "did load"}));
}

TEST(WindowController, KeepsAWindowThatIsClosed)
{
    Window controller;
    ui::PanelWindow* const window = &controller.window();
    window->makeKeyAndOrderFront();
    controller.close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(&controller.window(), window);
    window->makeKeyAndOrderFront();
    EXPECT_TRUE(window->isVisible());
}

TEST(WindowController, ClosingDoesNotLoad)
{
    Window controller;
    controller.close();
    EXPECT_FALSE(controller.isWindowLoaded());
}

TEST(WindowControllerDeathTest, AWindowThatCannotBeLoadedEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Window controller;
    controller.isMissing = true;
    EXPECT_DEATH(controller.window(), "a window could not be loaded");
}

TEST(ViewController, LoadsItsViewOnceWhenItIsFirstAskedFor)
{
    View controller;
    EXPECT_FALSE(controller.isViewLoaded());
    QWidget* const view = &controller.view();
    EXPECT_EQ(&controller.view(), view);
    EXPECT_EQ(controller.loads, 1);
    EXPECT_EQ(controller.didLoads, 1);
}

TEST(ViewController, AViewMayEndWithTheWindowThatItWasPutInto)
{
    View controller;
    {
        QWidget window;
        controller.view().setParent(&window);
    }
    EXPECT_FALSE(controller.isViewLoaded());
    controller.view();
    EXPECT_EQ(controller.didLoads, 2);
}

TEST(ViewController, TakesItsViewOutOfTheWindowWhenItEnds)
{
    QWidget window;
    {
        View controller;
        controller.view().setParent(&window);
    }
    EXPECT_TRUE(window.children().isEmpty());
}

TEST(ViewControllerDeathTest, AViewThatCannotBeLoadedEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    View controller;
    controller.isMissing = true;
    EXPECT_DEATH(controller.view(), "a view could not be loaded");
}

TEST(Outlet, IsWeak)
{
    auto label = std::make_unique<QLabel>("text");
    const ui::Outlet<QLabel> outlet(label.get());
    ASSERT_TRUE(outlet);
    EXPECT_EQ(outlet->text(), "text");
    label.reset();
    EXPECT_FALSE(outlet);
    EXPECT_EQ(outlet.get(), nullptr);
}

TEST(OutletDeathTest, UsingOneThatIsNotConnectedEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const ui::Outlet<QLabel> outlet;
    EXPECT_DEATH(outlet->clear(), "an outlet is not connected");
}

namespace {

class PanelWindowTest : public testing::Test
{
protected:
    PanelWindowTest()
    {
        panel.resize(200, 100);
        panel.onClose = [this] { ++closes; };
    }

    ui::PanelWindow panel;
    int closes = 0;
};

} // namespace

TEST_F(PanelWindowTest, MadeKeyHasTheKeyboard)
{
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    panel.makeKeyAndOrderFront();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&panel));
}

TEST_F(PanelWindowTest, MadeKeyComesBackFromTheTaskBar)
{
    panel.makeKeyAndOrderFront();
    panel.showMinimized();
    panel.makeKeyAndOrderFront();
    EXPECT_FALSE(panel.isMinimized());
    EXPECT_TRUE(panel.isVisible());
}

TEST_F(PanelWindowTest, StaysAboveAndCanOnlyBeClosed)
{
    const Qt::WindowFlags flags = panel.windowFlags();
    EXPECT_TRUE(flags.testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(flags.testFlag(Qt::WindowCloseButtonHint));
    EXPECT_FALSE(flags.testFlag(Qt::WindowMinimizeButtonHint));
    EXPECT_FALSE(flags.testFlag(Qt::WindowMaximizeButtonHint));
}

TEST_F(PanelWindowTest, EscapeClosesItAndOtherKeysDoNot)
{
    panel.makeKeyAndOrderFront();
    QTest::keyClick(&panel, Qt::Key_Return);
    EXPECT_TRUE(panel.isVisible());
    QTest::keyClick(&panel, Qt::Key_Escape);
    EXPECT_FALSE(panel.isVisible());
    EXPECT_EQ(closes, 1);
}

TEST_F(PanelWindowTest, SaysOnceThatItWasClosed)
{
    panel.makeKeyAndOrderFront();
    panel.close();
    panel.close();
    EXPECT_EQ(closes, 1);
    panel.makeKeyAndOrderFront();
    panel.close();
    EXPECT_EQ(closes, 2);
}

TEST_F(PanelWindowTest, ClosesWithoutAListener)
{
    panel.onClose = nullptr;
    panel.makeKeyAndOrderFront();
    panel.close();
    EXPECT_FALSE(panel.isVisible());
}

TEST_F(PanelWindowTest, IsOnTheGradientOrOnOneColour)
{
    const QImage gradient = panel.grab().toImage();
    EXPECT_LT(gradient.pixelColor(5, 95).lightness(), gradient.pixelColor(5, 5).lightness());
    panel.setBackgroundColor(ui::Theme::GROUND_HIGH);
    const QImage plain = panel.grab().toImage();
    EXPECT_EQ(plain.pixelColor(5, 95), ui::Theme::GROUND_HIGH);
    EXPECT_EQ(plain.pixelColor(5, 5), ui::Theme::GROUND_HIGH);
}
