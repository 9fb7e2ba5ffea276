#include "linux/x11/FrontRequest.h"

#include <gtest/gtest.h>

namespace {

using x11::FrontRequest;

constexpr FrontRequest::Clock::time_point NOON{std::chrono::hours(12)};
constexpr std::chrono::milliseconds MOMENT{1};
constexpr xcb_window_t WANTED = 7;
constexpr xcb_window_t OTHER = 8;

TEST(FrontRequest, IsNotRepeatedWhereNothingWasAskedFor)
{
    FrontRequest request;
    EXPECT_FALSE(request.pending(NOON));
    EXPECT_FALSE(request.overruledBy(OTHER, NOON));
}

TEST(FrontRequest, IsSettledWhileItsWindowIsInFront)
{
    FrontRequest request;
    request.made(WANTED, NOON);
    EXPECT_FALSE(request.overruledBy(WANTED, NOON));
    EXPECT_TRUE(request.pending(NOON));
}

TEST(FrontRequest, IsRepeatedWhereAnotherWindowComesInFront)
{
    FrontRequest request;
    request.made(WANTED, NOON);
    EXPECT_FALSE(request.overruledBy(WANTED, NOON));
    EXPECT_TRUE(request.overruledBy(OTHER, NOON + MOMENT));
    EXPECT_EQ(WANTED, request.window());
}

TEST(FrontRequest, IsRepeatedWhereNoWindowIsInFront)
{
    FrontRequest request;
    request.made(WANTED, NOON);
    EXPECT_TRUE(request.overruledBy(XCB_NONE, NOON));
}

TEST(FrontRequest, GivesWayToWhoInsists)
{
    FrontRequest request;
    request.made(WANTED, NOON);
    for (int count = 0; count < FrontRequest::MOST_REPEATS; ++count) {
        EXPECT_TRUE(request.overruledBy(OTHER, NOON));
    }
    EXPECT_FALSE(request.overruledBy(OTHER, NOON));
}

TEST(FrontRequest, LeavesALaterChoiceToTheUser)
{
    FrontRequest request;
    request.made(WANTED, NOON);
    EXPECT_FALSE(request.overruledBy(OTHER, NOON + FrontRequest::SETTLING));
}

TEST(FrontRequest, IsSettledAfterTheLockHasLeft)
{
    FrontRequest request;
    request.made(WANTED, NOON);
    const auto left = NOON + FrontRequest::SETTLING - MOMENT;
    request.lockLeft(left);
    EXPECT_TRUE(request.overruledBy(OTHER, left + FrontRequest::SETTLING - MOMENT));
    EXPECT_FALSE(request.pending(left + FrontRequest::SETTLING));
}

TEST(FrontRequest, OfLongAgoIsNotRepeatedWhenTheLockLeaves)
{
    FrontRequest request;
    request.made(WANTED, NOON);
    const auto left = NOON + FrontRequest::SETTLING;
    request.lockLeft(left);
    EXPECT_FALSE(request.overruledBy(OTHER, left));
}

TEST(FrontRequest, IsForgottenWhenItIsWithdrawn)
{
    FrontRequest request;
    request.made(WANTED, NOON);
    request.withdraw();
    EXPECT_FALSE(request.overruledBy(OTHER, NOON));
}

} // namespace
