// What every pair of queues promises: the one in memory that the logic is tested with, and the
// toolkit's.
#include "fakes/FakeDispatchQueues.h"
#include "linux/qt/QtDispatchQueues.h"
#include "qt/WaitFor.h"

#include <atomic>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct InMemory
{
    fakes::FakeDispatchQueues queues;

    template <typename Condition> bool runUntil(Condition&& condition)
    {
        queues.runAll();
        return condition();
    }
};

struct OfTheToolkit
{
    qt::QtDispatchQueues queues;

    template <typename Condition> bool runUntil(Condition&& condition)
    {
        return support::waitFor(condition);
    }
};

template <typename Subject> class DispatchContract : public testing::Test
{
protected:
    Subject subject;
    platform::DispatchQueues& queues = subject.queues;
    std::vector<std::string> ran;
};

using Subjects = testing::Types<InMemory, OfTheToolkit>;
TYPED_TEST_SUITE(DispatchContract, Subjects);

} // namespace

TYPED_TEST(DispatchContract, MainBlockRunsAfterTheCurrentTurnAndNotAtOnce)
{
    this->queues.asyncMain([this] { this->ran.emplace_back("block"); });
    EXPECT_TRUE(this->ran.empty());

    EXPECT_TRUE(this->subject.runUntil([this] { return this->ran.size() == 1; }));
}

TYPED_TEST(DispatchContract, MainBlocksRunInOrderOfSubmission)
{
    for (int number = 0; number < 100; ++number) {
        this->queues.asyncMain([this, number] { this->ran.push_back(std::to_string(number)); });
    }

    ASSERT_TRUE(this->subject.runUntil([this] { return this->ran.size() == 100; }));
    for (std::size_t number = 0; number < this->ran.size(); ++number) {
        EXPECT_EQ(this->ran[number], std::to_string(number));
    }
}

TYPED_TEST(DispatchContract, ABlockQueuedByABlockComesAfterTheBlocksThatWaitAlready)
{
    this->queues.asyncMain([this] {
        this->queues.asyncMain([this] { this->ran.emplace_back("inner"); });
        this->ran.emplace_back("outer");
    });
    this->queues.asyncMain([this] { this->ran.emplace_back("second"); });

    ASSERT_TRUE(this->subject.runUntil([this] { return this->ran.size() == 3; }));
    EXPECT_EQ(this->ran, (std::vector<std::string>{"outer", "second", "inner"}));
}

TYPED_TEST(DispatchContract, GlobalBlockRunsAndComesBackToTheMainQueue)
{
    this->queues.asyncGlobal([this] {
        this->queues.asyncMain([this] { this->ran.emplace_back("back"); });
    });
    EXPECT_TRUE(this->ran.empty());

    EXPECT_TRUE(this->subject.runUntil([this] { return this->ran.size() == 1; }));
}

TYPED_TEST(DispatchContract, EveryGlobalBlockRunsOnce)
{
    std::atomic<int> count = 0;
    for (int number = 0; number < 200; ++number) {
        this->queues.asyncGlobal([&count] { ++count; });
    }

    EXPECT_TRUE(this->subject.runUntil([&count] { return count == 200; }));
}
