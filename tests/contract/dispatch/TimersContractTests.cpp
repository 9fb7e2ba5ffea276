// What timers promise, in memory and with the toolkit.
#include "fakes/FakeTimers.h"
#include "linux/qt/QtTimers.h"
#include "qt/WaitFor.h"

#include <QElapsedTimer>

#include <memory>

#include <gtest/gtest.h>

namespace {

struct InMemory
{
    fakes::FakeTimers timers;

    template <typename Condition> bool runUntil(Condition&& condition)
    {
        for (int round = 0; round < 10 && !condition(); ++round) {
            timers.fireAll();
        }
        return condition();
    }
};

struct OfTheToolkit
{
    qt::QtTimers timers;

    template <typename Condition> bool runUntil(Condition&& condition)
    {
        return support::waitFor(condition);
    }
};

template <typename Subject> class TimersContract : public testing::Test
{
protected:
    Subject subject;
    platform::Timers& timers = subject.timers;
};

using Subjects = testing::Types<InMemory, OfTheToolkit>;
TYPED_TEST_SUITE(TimersContract, Subjects);

} // namespace

TYPED_TEST(TimersContract, NothingFiresAtOnce)
{
    int fired = 0;
    this->timers.scheduleTimer(0.0, false, [&fired] { ++fired; });

    EXPECT_EQ(fired, 0);
    EXPECT_TRUE(this->subject.runUntil([&fired] { return fired == 1; }));
}

TYPED_TEST(TimersContract, ARepeatingTimerFiresAgainAndAOneShotDoesNot)
{
    int once = 0;
    int often = 0;
    this->timers.scheduleTimer(0.001, false, [&once] { ++once; });
    this->timers.scheduleTimer(0.002, true, [&often] { ++often; });

    EXPECT_TRUE(this->subject.runUntil([&often] { return often == 5; }));
    EXPECT_EQ(once, 1);
}

TYPED_TEST(TimersContract, ATimerMayScheduleAnotherOne)
{
    int inner = 0;
    this->timers.scheduleTimer(0.0, false, [this, &inner] {
        this->timers.scheduleTimer(0.0, false, [&inner] { ++inner; });
    });

    EXPECT_TRUE(this->subject.runUntil([&inner] { return inner == 1; }));
}

TEST(QtTimers, DoesNotFireBeforeItsTime)
{
    qt::QtTimers timers;
    QElapsedTimer clock;
    qint64 elapsed = 0;
    clock.start();
    timers.scheduleTimer(0.1, false, [&] { elapsed = clock.elapsed(); });

    ASSERT_TRUE(support::waitFor([&] { return elapsed != 0; }));
    EXPECT_GE(elapsed, 99);
}

TEST(QtTimers, WhatIsStillDueAtTheEndIsDropped)
{
    const auto witness = std::make_shared<int>(0);
    {
        qt::QtTimers timers;
        timers.scheduleTimer(3.0, true, [witness] {});
        EXPECT_EQ(witness.use_count(), 2);
    }

    EXPECT_EQ(witness.use_count(), 1);
}
