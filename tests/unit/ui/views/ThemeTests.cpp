#include "qt/Contrast.h"
#include "qt/WaitFor.h"
#include "ui/views/GrayGradientView.h"
#include "ui/views/PanelWindow.h"
#include "ui/views/Theme.h"

#include <QApplication>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>

#include <cstdlib>

#include <gtest/gtest.h>

using support::contrast;
using ui::Theme;

namespace {

/// The difference of two colours where it is largest.
int difference(const QColor& one, const QColor& other)
{
    return std::max(
        {std::abs(one.red() - other.red()),
         std::abs(one.green() - other.green()),
         std::abs(one.blue() - other.blue())}
    );
}

} // namespace

TEST(Theme, TextsStandOutFromEveryGround)
{
    for (const QColor& ground : {Theme::GROUND_LOW, Theme::GROUND_HIGH}) {
        EXPECT_GE(contrast(Theme::TEXT, ground), 4.5);
        EXPECT_GE(contrast(Theme::QUIET, ground), 4.5);
        EXPECT_GE(contrast(Theme::FOCUS, ground), 3.0); // an outline
    }
    EXPECT_GE(contrast(Theme::TEXT, Theme::ACCENT), 4.5); // and the outline there
}

TEST(Theme, OutlinesStandOutFromTheirGround)
{
    EXPECT_GE(contrast(Theme::BORDER, Theme::GROUND_LOW), 3.0);
    EXPECT_GE(contrast(Theme::BORDER, QColor(68, 70, 77)), 3.0); // amid the gradient
    EXPECT_GE(contrast(Theme::BORDER_ON_LIGHT, Theme::GROUND_HIGH), 3.0);
    EXPECT_GE(contrast(Theme::BORDER_ON_LIGHT, Theme::LINE), 3.0); // a strip
}

TEST(Theme, TheDefaultButtonShowsThatItHasTheKeys)
{
    ui::PanelWindow ground;
    ground.resize(200, 100);
    QPushButton button(&ground);
    QPushButton other(&ground);
    button.setGeometry(50, 30, 100, 40);
    button.setDefault(true);
    other.setFocus();
    ground.makeKeyAndOrderFront();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ground));
    const QPoint edge(50, 50);
    const double ratio = ground.devicePixelRatioF();
    EXPECT_EQ(ground.grab().toImage().pixelColor(edge * ratio), Theme::ACCENT);
    button.setFocus();
    EXPECT_EQ(ground.grab().toImage().pixelColor(edge * ratio), Theme::TEXT);
}

TEST(Theme, TheTextOfAButtonStandsOutUnderThePointerToo)
{
    ui::PanelWindow ground;
    ground.setBackgroundColor(Theme::GROUND_HIGH); // the lightest that a button stands on
    ground.resize(200, 100);
    QPushButton button(&ground);
    button.setGeometry(50, 30, 100, 40);
    ground.makeKeyAndOrderFront();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&ground));
    for (const bool isDefault : {false, true}) {
        button.setDefault(isDefault);
        QTest::mouseMove(ground.windowHandle(), QPoint(2, 2));
        ASSERT_TRUE(support::waitFor([&button] { return !button.underMouse(); }));
        const QColor usual = ground.grab().toImage().pixelColor(60, 50);
        QTest::mouseMove(ground.windowHandle(), QPoint(100, 50));
        ASSERT_TRUE(support::waitFor([&button] { return button.underMouse(); }));
        const QColor hovered = ground.grab().toImage().pixelColor(60, 50);

        EXPECT_NE(hovered, usual);
        EXPECT_GE(contrast(Theme::TEXT, usual), 4.5) << isDefault;
        EXPECT_GE(contrast(Theme::TEXT, hovered), 4.5) << isDefault;
    }
}

TEST(Theme, EveryWordOfTheStyleSheetIsReplaced)
{
    const QString sheet = qApp->styleSheet();
    EXPECT_TRUE(sheet.contains("QPushButton"));
    EXPECT_FALSE(sheet.contains(QRegularExpression("@\\w")));
}

TEST(GrayGradientView, GoesFromDarkAtItsBottomToLightAtItsTop)
{
    ui::GrayGradientView view;
    view.resize(20, 200);
    const QImage picture = view.grab().toImage();
    EXPECT_LE(difference(picture.pixelColor(0, 199), QColor(42, 43, 47)), 1);
    EXPECT_LE(difference(picture.pixelColor(19, 199), QColor(42, 43, 47)), 1);
    EXPECT_LE(difference(picture.pixelColor(0, 100), QColor(68, 70, 77)), 1);
    EXPECT_LE(difference(picture.pixelColor(0, 0), QColor(94, 97, 106)), 1);
    EXPECT_LE(difference(picture.pixelColor(19, 0), QColor(94, 97, 106)), 1);
}

TEST(GrayGradientView, FillsAViewOfAnySize)
{
    ui::GrayGradientView view;
    for (const QSize size : {QSize(1, 1), QSize(300, 2), QSize(2, 300)}) {
        view.resize(size);
        const QImage picture = view.grab().toImage();
        EXPECT_EQ(picture.size(), size);
        EXPECT_EQ(picture.pixelColor(size.width() - 1, size.height() - 1).alpha(), 255);
    }
}
