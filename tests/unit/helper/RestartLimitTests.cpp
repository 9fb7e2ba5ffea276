#include "helper/RestartLimit.h"

#include <gtest/gtest.h>

namespace {

using helper::RestartLimit;
using std::chrono::milliseconds;
using std::chrono::seconds;

const RestartLimit::TimePoint START = RestartLimit::TimePoint() + std::chrono::hours(1);

// How many of so many restarts, that far apart, are allowed.
int allowed(RestartLimit& limit, int attempts, seconds apart)
{
    int number = 0;
    for (int i = 0; i < attempts; ++i) {
        number += limit.allow(START + i * apart) ? 1 : 0;
    }
    return number;
}

} // namespace

TEST(RestartLimit, FiveRestartsAtOnceAreAllowedAndTheSixthIsNot)
{
    RestartLimit limit;

    EXPECT_EQ(allowed(limit, 5, seconds(0)), 5);
    EXPECT_FALSE(limit.allow(START));
}

TEST(RestartLimit, AllowsAgainWhenTheFirstOfFiveIsAMinuteOld)
{
    RestartLimit limit;
    EXPECT_EQ(allowed(limit, 5, seconds(10)), 5);

    EXPECT_FALSE(limit.allow(START + seconds(60) - milliseconds(1)));
    EXPECT_TRUE(limit.allow(START + seconds(60)));
    EXPECT_FALSE(limit.allow(START + seconds(69)));
    EXPECT_TRUE(limit.allow(START + seconds(70)));
}

TEST(RestartLimit, RefusedRestartsDoNotCount)
{
    RestartLimit limit;
    EXPECT_EQ(allowed(limit, 50, seconds(1)), 5);

    EXPECT_TRUE(limit.allow(START + seconds(60)));
}

TEST(RestartLimit, RestartsFarApartAreNeverRefused)
{
    RestartLimit limit;

    EXPECT_EQ(allowed(limit, 100, seconds(12)), 100);
}
