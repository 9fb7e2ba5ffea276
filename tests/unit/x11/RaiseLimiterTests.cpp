#include "linux/x11/RaiseLimiter.h"

#include <gtest/gtest.h>

namespace {

using x11::RaiseLimiter;

constexpr RaiseLimiter::Clock::time_point NOON{std::chrono::hours(12)};

TEST(RaiseLimiter, LetsABurstThroughAtOnce)
{
    RaiseLimiter limiter;
    for (int count = 0; count < RaiseLimiter::BURST; ++count) {
        EXPECT_TRUE(limiter.take(NOON));
    }
    EXPECT_FALSE(limiter.take(NOON));
}

TEST(RaiseLimiter, TellsWhenTheNextOneMayHappen)
{
    RaiseLimiter limiter;
    while (limiter.take(NOON)) {
    }
    EXPECT_GT(limiter.due(), NOON);
    EXPECT_LE(limiter.due(), NOON + RaiseLimiter::INTERVAL);
    EXPECT_TRUE(limiter.take(limiter.due()));
}

TEST(RaiseLimiter, LetsOneAnIntervalThroughInTheLongRun)
{
    RaiseLimiter limiter;
    int taken = 0;
    for (auto now = NOON; now < NOON + std::chrono::seconds(4);
         now += std::chrono::microseconds(500)) {
        taken += limiter.take(now) ? 1 : 0;
    }
    const auto expected = RaiseLimiter::BURST + std::chrono::seconds(4) / RaiseLimiter::INTERVAL;
    EXPECT_LE(taken, expected);
    EXPECT_GE(taken, expected - 1);
}

} // namespace
