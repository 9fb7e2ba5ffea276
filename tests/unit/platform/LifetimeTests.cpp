#include "platform/Lifetime.h"

#include <functional>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(Lifetime, AGuardedBlockRunsWithItsArgumentsWhileItGoesOn)
{
    const platform::Lifetime lifetime;
    std::string heard;
    const std::function<void(const std::string&, int)> guarded =
        lifetime.guard([&](const std::string& text, int number) {
            heard = text + std::to_string(number);
        });

    guarded("a", 1);

    EXPECT_EQ(heard, "a1");
}

TEST(Lifetime, AGuardedBlockDoesNothingOnceItHasEnded)
{
    auto lifetime = std::make_unique<platform::Lifetime>();
    int calls = 0;
    const std::function<void()> guarded = lifetime->guard([&] { ++calls; });

    lifetime.reset();
    guarded();

    EXPECT_EQ(calls, 0);
}

TEST(Lifetime, AWatchTellsThatItEndedMeanwhile)
{
    auto lifetime = std::make_unique<platform::Lifetime>();
    const platform::Lifetime::Watch watch = lifetime->watch();
    EXPECT_FALSE(watch.hasEnded());

    lifetime.reset();

    EXPECT_TRUE(watch.hasEnded());
}

} // namespace
