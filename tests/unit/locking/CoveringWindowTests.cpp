#include "fakes/FakePlatform.h"
#include "locking/CoveringWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using fakes::FakeScreens;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(CoveringWindow, HasExactlyTheseAttributes)
{
    const platform::WindowAttributes attributes =
        locking::coveringWindowAttributes({10, 20, 1920, 1080});

    EXPECT_FALSE(attributes.releasedWhenClosed);
    EXPECT_DOUBLE_EQ(attributes.backgroundColor.red, 65.0 / 255.0);
    EXPECT_DOUBLE_EQ(attributes.backgroundColor.green, 68.0 / 255.0);
    EXPECT_DOUBLE_EQ(attributes.backgroundColor.blue, 75.0 / 255.0);
    EXPECT_DOUBLE_EQ(attributes.backgroundColor.alpha, 1.0);
    EXPECT_FALSE(attributes.opaque);
    EXPECT_EQ(static_cast<int>(attributes.level), 13);
    EXPECT_EQ(attributes.collectionBehavior, 1U);
    EXPECT_EQ(attributes.styleMask, 0U);
    EXPECT_EQ(attributes.frame, (platform::Rect{10, 20, 1920, 1080}));
}

TEST(CoveringWindow, IsMadeForEveryScreenButTheMainOneInOrder)
{
    fakes::FakePlatform platform;
    platform.screens.list = {
        {FakeScreens::screen(0), FakeScreens::screen(1), FakeScreens::screen(2)}};

    const auto windows = locking::createCoveringWindows();

    EXPECT_EQ(windows.size(), 2U);
    EXPECT_THAT(platform.calls, ElementsAre("windows create 1", "windows create 2"));
    EXPECT_EQ(platform.windows.windows.at(1).attributes.frame, FakeScreens::screen(1).frame);
    EXPECT_EQ(platform.windows.windows.at(2).attributes.frame, FakeScreens::screen(2).frame);
    EXPECT_EQ(platform.windows.visibleCount(), 0);
}

TEST(CoveringWindow, IsNotNeededForASingleScreen)
{
    const fakes::FakePlatform platform;

    EXPECT_THAT(locking::createCoveringWindows(), IsEmpty());
}

TEST(CoveringWindow, WithoutAListOfScreensTheProcessStops)
{
    fakes::FakePlatform platform;
    platform.screens.list.reset();

    EXPECT_DEATH(locking::createCoveringWindows(), "the screens to cover are not known");
}

TEST(CoveringWindow, WithoutAMainScreenTheProcessStops)
{
    fakes::FakePlatform platform;
    platform.screens.list->clear();

    EXPECT_DEATH(locking::createCoveringWindows(), "the screens to cover are not known");
}
