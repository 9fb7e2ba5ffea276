#include "linux/process/DescriptorLimit.h"
#include "processes/DescriptorLimit.h"

#include <gtest/gtest.h>

TEST(DescriptorLimit, IsRaisedToWhatTheSystemAllowsAndTheUsualOneComesBackForAWhile)
{
    const processes::DescriptorLimit usual(200);
    const rlim_t most = processes::descriptorLimit().rlim_max;

    process::raiseDescriptorLimit();
    EXPECT_EQ(processes::descriptorLimit().rlim_cur, most);
    {
        const process::UsualDescriptorLimit forAWhile;
        EXPECT_EQ(processes::descriptorLimit().rlim_cur, 200U);
        EXPECT_EQ(processes::descriptorLimit().rlim_max, most);
    }
    EXPECT_EQ(processes::descriptorLimit().rlim_cur, most);
}
