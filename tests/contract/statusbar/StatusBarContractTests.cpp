// What every status bar promises: the one in memory that the logic is tested with, the one over the
// bus and the one in the system tray.
#include "TestPicture.h"
#include "Worlds.h"
#include "qt/QtEnvironment.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

const testing::Environment* const APPLICATION =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QApplication>);

template <typename World> class StatusBarContract : public testing::Test
{
protected:
    void makeItem()
    {
        item = world.bar().statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH);
        item->onDraw = [this] {
            ++drawings;
            return platform::StatusItemLook{picture.path(), false, "Tarvel"};
        };
        item->onMouseDown = [this] { ++clicks; };
        item->setMenu({{"Open Tarvel", [this] { ++openings; }}, {"Second", [] {}}});
        item->setNeedsDisplay();
    }

    /// As often in all, at least.
    bool isDrawn(int times)
    {
        return world.soon([&] { return drawings >= times; });
    }

    bool isDrawnAgain() { return isDrawn(drawings + 1); }

    bool isShownSoon()
    {
        return world.soon([&] { return item->isShown(); });
    }

    World world;
    TestPicture picture;
    std::unique_ptr<platform::StatusItem> item;
    int drawings = 0;
    int clicks = 0;
    int openings = 0;
};

using Worlds = testing::Types<FakeWorld, NotifierWorld, TrayWorld>;
TYPED_TEST_SUITE(StatusBarContract, Worlds);

} // namespace

TYPED_TEST(StatusBarContract, WhereThereIsNoAreaAnItemIsNotShown)
{
    this->makeItem();
    EXPECT_FALSE(this->item->isShown());
    EXPECT_EQ(this->item->frame(), std::nullopt);
}

TYPED_TEST(StatusBarContract, WhereThereIsAnAreaAnItemIsShownFromItsCreationOn)
{
    this->world.areaComes();
    this->makeItem();
    ASSERT_TRUE(this->isShownSoon());
    const auto second = this->world.bar().statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH);
    EXPECT_TRUE(second->isShown());
}

TYPED_TEST(StatusBarContract, AnItemIsDrawn)
{
    this->world.areaComes();
    this->makeItem();
    EXPECT_TRUE(this->isDrawnAgain());
}

TYPED_TEST(StatusBarContract, AnItemAppearsWhenTheAreaComesLate)
{
    this->makeItem();
    EXPECT_FALSE(this->item->isShown());
    const int before = this->drawings;
    this->world.areaComes();
    EXPECT_TRUE(this->isShownSoon());
    EXPECT_TRUE(this->isDrawn(before + 1));
}

TYPED_TEST(StatusBarContract, AnItemReturnsWithItsArea)
{
    this->world.areaComes();
    this->makeItem();
    ASSERT_TRUE(this->isDrawnAgain());
    for (int round = 0; round < 3; ++round) {
        this->world.areaGoes();
        ASSERT_TRUE(this->world.soon([&] { return !this->item->isShown(); }));
        const int before = this->drawings;
        this->world.areaComes();
        ASSERT_TRUE(this->isShownSoon());
        ASSERT_TRUE(this->isDrawn(before + 1));
    }
    this->world.click();
    EXPECT_TRUE(this->world.soon([&] { return this->clicks == 1; }));
}

TYPED_TEST(StatusBarContract, AClickIsToldAndNothingElse)
{
    this->world.areaComes();
    this->makeItem();
    ASSERT_TRUE(this->isDrawnAgain());
    this->world.click();
    ASSERT_TRUE(this->world.soon([&] { return this->clicks == 1; }));
    this->world.click();
    ASSERT_TRUE(this->world.soon([&] { return this->clicks == 2; }));
    EXPECT_EQ(this->openings, 0);
}

TYPED_TEST(StatusBarContract, ANeededDrawingComesLaterAndAsksForTheLook)
{
    this->world.areaComes();
    this->makeItem();
    ASSERT_TRUE(this->isDrawnAgain());
    const int before = this->drawings;
    this->item->setNeedsDisplay();
    EXPECT_EQ(this->drawings, before);
    EXPECT_TRUE(this->isDrawnAgain());
}

TYPED_TEST(StatusBarContract, AMenuEntryDoesWhatItSays)
{
    this->world.areaComes();
    this->makeItem();
    ASSERT_TRUE(this->isDrawnAgain());
    this->world.choose(0);
    ASSERT_TRUE(this->world.soon([&] { return this->openings == 1; }));
    EXPECT_EQ(this->clicks, 0);
}

TYPED_TEST(StatusBarContract, AMenuMayBeReplaced)
{
    this->world.areaComes();
    this->makeItem();
    ASSERT_TRUE(this->isDrawnAgain());
    this->world.choose(0);
    ASSERT_TRUE(this->world.soon([&] { return this->openings == 1; }));
    int other = 0;
    this->item->setMenu({{"Another", [&] { ++other; }}});
    this->world.choose(0);
    ASSERT_TRUE(this->world.soon([&] { return other == 1; }));
    EXPECT_EQ(this->openings, 1);
}

TYPED_TEST(StatusBarContract, AnItemIsTakenAwayWithItsEnd)
{
    this->world.areaComes();
    this->makeItem();
    ASSERT_TRUE(this->isDrawnAgain());
    this->world.click();
    ASSERT_TRUE(this->world.soon([&] { return this->clicks == 1; }));
    this->item.reset();
    EXPECT_TRUE(this->world.soon([&] { return this->world.isTakenAway(); }));
}

TYPED_TEST(StatusBarContract, WithoutCallbacksEventsAreDropped)
{
    this->world.areaComes();
    this->makeItem();
    ASSERT_TRUE(this->isDrawnAgain());
    this->item->onMouseDown = nullptr;
    this->world.click();
    this->item->onMouseDown = [this] { ++this->clicks; };
    this->item->onDraw = nullptr;
    this->item->setNeedsDisplay();
    this->world.click();
    EXPECT_TRUE(this->world.soon([&] { return this->clicks >= 1; }));
}
