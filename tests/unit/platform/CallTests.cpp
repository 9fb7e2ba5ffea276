#include "platform/Call.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

TEST(Call, UnsetListenerIsDropped)
{
    const std::function<void(int)> unset;

    EXPECT_NO_THROW(platform::call(unset, 1));
}

TEST(Call, ListenerGetsTheArguments)
{
    std::string heard;
    const std::function<void(const std::string&, int)> listener =
        [&](const std::string& name, int number) { heard = name + std::to_string(number); };

    platform::call(listener, "seven", 7);

    EXPECT_EQ(heard, "seven7");
}

TEST(Call, WhatIsOwnedByOneIsHandedOver)
{
    std::unique_ptr<int> kept;
    const std::function<void(std::unique_ptr<int>)> listener = [&](std::unique_ptr<int> value) {
        kept = std::move(value);
    };

    platform::call(listener, std::make_unique<int>(3));

    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(*kept, 3);
}

TEST(Call, ListenerMayReplaceItselfWhileItRuns)
{
    const auto word = std::make_shared<std::string>("first");
    std::string heard;
    std::function<void()> listener;
    listener = [&, held = word] {
        listener = nullptr;
        heard = *held; // still there
    };

    platform::call(listener);

    EXPECT_EQ(heard, "first");
    EXPECT_FALSE(listener);
}
