#include "platform/Secret.h"

#include <algorithm>
#include <string_view>

#include <gtest/gtest.h>

namespace {

bool isBlank(const char* bytes, std::size_t count)
{
    return std::all_of(bytes, bytes + count, [](char byte) { return byte == 0; });
}

} // namespace

TEST(Secret, WipingOverwritesEveryByteThatTheTextHad)
{
    for (const std::string_view secret : {"", "short", "longer than what fits into the object"}) {
        std::string text(secret);
        const char* const bytes = text.data();
        platform::wipe(text);

        EXPECT_TRUE(text.empty());
        ASSERT_EQ(text.data(), bytes);
        EXPECT_TRUE(isBlank(bytes, secret.size())) << secret;
    }
}

TEST(Secret, HoldsTheTextAndLeavesNothingWhereItCameFrom)
{
    for (const std::string_view secret : {"short", "longer than what fits into the object"}) {
        std::string source(secret);
        const char* const bytes = source.data();
        const platform::Secret held(std::move(source));

        EXPECT_EQ(held.text(), secret);
        EXPECT_TRUE(isBlank(bytes, secret.size()));
    }
}
