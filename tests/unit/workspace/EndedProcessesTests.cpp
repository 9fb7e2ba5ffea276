#include "linux/workspace/EndedProcesses.h"

#include <gtest/gtest.h>

using workspace::EndedProcesses;

TEST(EndedProcesses, AreToldApartByTheirStarts)
{
    EndedProcesses ended;
    ended.add(10, 100);

    EXPECT_TRUE(ended.contains(10, 100));
    EXPECT_FALSE(ended.contains(10, 999)) << "the identifier was used again";
    EXPECT_FALSE(ended.contains(20, 100));
}

TEST(EndedProcesses, OnlyTheLatestAreRemembered)
{
    EndedProcesses ended;
    for (std::size_t count = 0; count <= EndedProcesses::MOST_REMEMBERED; ++count) {
        ended.add(static_cast<pid_t>(count), 1);
    }

    EXPECT_FALSE(ended.contains(0, 1));
    EXPECT_TRUE(ended.contains(1, 1));
    EXPECT_TRUE(ended.contains(static_cast<pid_t>(EndedProcesses::MOST_REMEMBERED), 1));
}
