#include "app/BackgroundRunner.h"
#include "fakes/FakePlatform.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

TEST(BackgroundRunner, ABlockForTheMainThreadRunsAfterTheCurrentTurn)
{
    fakes::FakePlatform platform;
    std::vector<int> order;

    app::BackgroundRunner::runOnMainThread([&order] {
        order.push_back(1);
        app::BackgroundRunner::runOnMainThread([&order] { order.push_back(3); });
        order.push_back(2);
    });

    EXPECT_THAT(order, ElementsAre());
    platform.dispatchQueues.runMainTurn();
    EXPECT_THAT(order, ElementsAre(1, 2));
    platform.dispatchQueues.runMainTurn();
    EXPECT_THAT(order, ElementsAre(1, 2, 3));
}

TEST(BackgroundRunner, ABlockToRunGoesToTheGlobalQueue)
{
    fakes::FakePlatform platform;
    bool hasRun = false;

    app::BackgroundRunner::run([&hasRun] { hasRun = true; });

    EXPECT_FALSE(hasRun);
    EXPECT_TRUE(platform.dispatchQueues.main.empty());
    platform.dispatchQueues.runGlobalTurn();
    EXPECT_TRUE(hasRun);
}
