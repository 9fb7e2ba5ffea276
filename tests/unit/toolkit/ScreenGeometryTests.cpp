// Places on a desktop of two screens, at whatever scale this program was started with.
#include "qt/QtEnvironment.h"
#include "toolkit/ScreenGeometry.h"

#include <QApplication>
#include <QScreen>

#include <gtest/gtest.h>

namespace {

const auto* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QApplication>);

double scale()
{
    return qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble();
}

QRect scaled(const QPoint& origin, const QRect& inside)
{
    const QPoint place = origin + QPointF(inside.topLeft() / scale()).toPoint();
    return {place, inside.size() / scale()};
}

} // namespace

TEST(ToolkitGeometry, TheScreensAreThoseOfTheTest)
{
    ASSERT_EQ(QGuiApplication::screens().size(), 2);
    EXPECT_EQ(QGuiApplication::screens()[1]->devicePixelRatio(), scale());
    EXPECT_EQ(QGuiApplication::screens()[1]->geometry().x(), 1920);
}

TEST(ToolkitGeometry, AWholeScreenIsTheToolkitsScreen)
{
    EXPECT_EQ(
        toolkit::toolkitGeometry({0, 0, 1920, 1080}), QGuiApplication::screens()[0]->geometry()
    );
    EXPECT_EQ(
        toolkit::toolkitGeometry({1920, 0, 1280, 1024}), QGuiApplication::screens()[1]->geometry()
    );
}

TEST(ToolkitGeometry, APlaceIsScaledWithinTheScreenThatHoldsIt)
{
    EXPECT_EQ(
        toolkit::toolkitGeometry({300, 150, 60, 30}), scaled({0, 0}, QRect(300, 150, 60, 30))
    );
    EXPECT_EQ(
        toolkit::toolkitGeometry({1920 + 300, 150, 60, 30}),
        scaled({1920, 0}, QRect(300, 150, 60, 30))
    );
}

TEST(ToolkitGeometry, TheEndOfAScreenBelongsToItAndNotToTheNext)
{
    const QRect last = toolkit::toolkitGeometry({1918, 0, 2, 2});
    EXPECT_TRUE(QGuiApplication::screens()[0]->geometry().contains(last.topLeft()))
        << last.x() << ' ' << last.y();
}

TEST(ToolkitGeometry, APlaceOnNoScreenStaysWhatItIs)
{
    EXPECT_EQ(toolkit::toolkitGeometry({5000, 5000, 10, 10}), QRect(5000, 5000, 10, 10));
}
