#include "helper/Alarm.h"
#include "helper/EventLoop.h"

#include <gtest/gtest.h>

TEST(Alarm, CallsWhatWasSetLastAndThatOnce)
{
    helper::EventLoop loop;
    helper::Alarm alarm;
    helper::Alarm end;
    int calls = 0;
    alarm.set(helper::Clock::now(), [] { ADD_FAILURE() << "was replaced"; });
    alarm.set(helper::Clock::now(), [&] { ++calls; });
    end.set(helper::Clock::now() + std::chrono::milliseconds(20), [&] { loop.finish(0); });
    loop.add(alarm);
    loop.add(end);

    loop.run();
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(alarm.deadline().has_value());
}

TEST(Alarm, MayBeSetAgainFromWhatItCalls)
{
    helper::EventLoop loop;
    helper::Alarm alarm;
    const helper::Clock::time_point later = helper::Clock::now() + std::chrono::milliseconds(10);
    alarm.set(helper::Clock::now(), [&] { alarm.set(later, [&] { loop.finish(0); }); });
    loop.add(alarm);

    loop.run();
    EXPECT_GE(helper::Clock::now(), later);
}
