#include "Facts.h"
#include "linux/workspace/AwaitedStarts.h"

#include <gtest/gtest.h>

namespace {

using workspace::instance;

class AwaitedStarts : public testing::Test
{
protected:
    AwaitedStarts()
    {
        ask.now = [this] { return time; };
        for (const auto& entry : {first, second, third}) {
            list.add(entry);
        }
        first->awaited = time;
        second->awaited = time;
    }

    workspace::Clock::time_point time{std::chrono::hours(1)};
    workspace::InstancePtr first = instance(1, "mousepad", 10);
    workspace::InstancePtr second = instance(2, "mousepad", 20);
    workspace::InstancePtr third = instance(3, "mousepad", 30); // has shown a window
    workspace::InstanceList list;
    workspace::Questions ask;
    workspace::AwaitedStarts awaited{list, ask};
};

} // namespace

TEST_F(AwaitedStarts, AreThoseThatHaveShownNoWindowYet)
{
    EXPECT_TRUE(awaited.contain(*first));
    EXPECT_FALSE(awaited.contain(*third));
    EXPECT_EQ(awaited.latestOf("mousepad"), second);
    EXPECT_EQ(awaited.latestOf("xterm"), nullptr);
}

TEST_F(AwaitedStarts, AreForgottenAfterAWhile)
{
    time += workspace::AwaitedStarts::LONGEST_START;
    EXPECT_TRUE(awaited.contain(*first));
    time += std::chrono::milliseconds(1);
    EXPECT_FALSE(awaited.contain(*first));
    EXPECT_EQ(awaited.latestOf("mousepad"), nullptr);
}
