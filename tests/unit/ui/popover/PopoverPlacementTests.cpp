#include "ui/popover/PopoverPlacement.h"

#include <gtest/gtest.h>

namespace {

constexpr QSize SIZE(300, 400);
constexpr QRect SCREEN(0, 0, 1280, 800);
constexpr int GAP = ui::POPOVER_GAP;

} // namespace

TEST(PopoverPlacement, IsBelowAnItemInAPanelAtTheTopAndCentredOnIt)
{
    const QRect place = ui::popoverPlace(SIZE, QRect(600, 2, 20, 20), QRect(0, 24, 1280, 776));
    EXPECT_EQ(place, QRect(QPoint(460, 24 + GAP), SIZE));
}

TEST(PopoverPlacement, IsAboveAnItemInAPanelAtTheBottom)
{
    const QRect place = ui::popoverPlace(SIZE, QRect(600, 778, 20, 20), QRect(0, 0, 1280, 776));
    EXPECT_EQ(place, QRect(QPoint(460, 776 - GAP - 400), SIZE));
}

TEST(PopoverPlacement, IsBesideAnItemInAPanelAtTheLeft)
{
    const QRect place = ui::popoverPlace(SIZE, QRect(4, 390, 20, 20), QRect(32, 0, 1248, 800));
    EXPECT_EQ(place, QRect(QPoint(32 + GAP, 200), SIZE));
}

TEST(PopoverPlacement, IsBesideAnItemInAPanelAtTheRight)
{
    const QRect place = ui::popoverPlace(SIZE, QRect(1255, 390, 20, 20), QRect(0, 0, 1250, 800));
    EXPECT_EQ(place, QRect(QPoint(1250 - GAP - 300, 200), SIZE));
}

TEST(PopoverPlacement, GoesWhereThereIsMoreRoomWhenThePanelIsNotKnown)
{
    EXPECT_EQ(ui::popoverPlace(SIZE, QRect(600, 0, 20, 20), SCREEN).top(), 20 + GAP);
    EXPECT_EQ(ui::popoverPlace(SIZE, QRect(600, 780, 20, 20), SCREEN).top(), 780 - GAP - 400);
}

TEST(PopoverPlacement, NeverCoversItsItemWhereItFitsOnAnySide)
{
    for (int y = 0; y <= 780; y += 20) {
        for (int x = 0; x <= 1260; x += 20) {
            const QRect item(x, y, 20, 20);
            const QRect place = ui::popoverPlace(SIZE, item, SCREEN);
            EXPECT_FALSE(place.intersects(item)) << x << ' ' << y;
            EXPECT_TRUE(SCREEN.contains(place)) << x << ' ' << y;
        }
    }
}

TEST(PopoverPlacement, StaysWithinTheWorkAreaAtItsCorners)
{
    const QRect workArea(0, 24, 1280, 776);
    EXPECT_EQ(ui::popoverPlace(SIZE, QRect(0, 2, 20, 20), workArea).left(), GAP);
    EXPECT_EQ(ui::popoverPlace(SIZE, QRect(1260, 2, 20, 20), workArea).left(), 1280 - GAP - 300);
}

TEST(PopoverPlacement, GoesBesideAnItemThatItFitsNeitherBelowNorAbove)
{
    const QRect small(0, 0, 1280, 600);
    EXPECT_EQ(
        ui::popoverPlace(SIZE, QRect(200, 290, 20, 20), small), QRect(QPoint(224, 100), SIZE)
    );
    EXPECT_EQ(
        ui::popoverPlace(SIZE, QRect(900, 290, 20, 20), small), QRect(QPoint(596, 100), SIZE)
    );
}

TEST(PopoverPlacement, WhatIsLargerThanTheWorkAreaBeginsWhereThatBegins)
{
    const QRect place = ui::popoverPlace(SIZE, QRect(100, 0, 20, 20), QRect(50, 20, 200, 300));
    EXPECT_EQ(place.topLeft(), QPoint(50 + GAP, 20 + GAP));
    EXPECT_EQ(place.size(), SIZE);
}

TEST(PopoverPlacement, APointerIsAnAnchorWithoutSize)
{
    const QRect place = ui::popoverPlace(SIZE, QRect(QPoint(640, 100), QSize(0, 0)), SCREEN);
    EXPECT_EQ(place.topLeft(), QPoint(490, 100 + GAP));
}

TEST(PopoverPlacement, KnowsScreensBesideTheFirstOne)
{
    const QRect second(1280, 0, 1920, 1080);
    const QRect place = ui::popoverPlace(SIZE, QRect(3180, 0, 20, 20), second);
    EXPECT_EQ(place, QRect(QPoint(3200 - GAP - 300, 20 + GAP), SIZE));
}
