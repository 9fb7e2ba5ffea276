#include "linux/qt/QtDispatchQueues.h"
#include "qt/QtEnvironment.h"
#include "qt/WaitFor.h"

#include <QEventLoop>

#include <functional>
#include <latch>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QCoreApplication>);

constexpr int BLOCKS = 250;

void submitNumbers(platform::DispatchQueues& queues, std::vector<int>& into)
{
    for (int number = 0; number < BLOCKS; ++number) {
        queues.asyncMain([&into, number] { into.push_back(number); });
    }
}

} // namespace

TEST(QtDispatchQueues, MainBlocksRunOnTheMainThreadWhoeverQueuesThem)
{
    qt::QtDispatchQueues queues;
    std::thread::id ranOn;
    bool ran = false;
    std::thread([&] {
        queues.asyncMain([&] {
            ranOn = std::this_thread::get_id();
            ran = true;
        });
    }).join();

    ASSERT_TRUE(support::waitFor([&] { return ran; }));
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

TEST(QtDispatchQueues, GlobalBlocksLeaveTheMainThread)
{
    qt::QtDispatchQueues queues;
    std::thread::id ranOn;
    std::latch done(1);
    queues.asyncGlobal([&] {
        ranOn = std::this_thread::get_id();
        done.count_down();
    });
    done.wait();

    EXPECT_NE(ranOn, std::this_thread::get_id());
}

TEST(QtDispatchQueues, GlobalBlocksRunConcurrently)
{
    qt::QtDispatchQueues queues;
    std::latch allThere(4);
    for (int count = 0; count < 3; ++count) {
        queues.asyncGlobal([&] { allThere.arrive_and_wait(); });
    }

    allThere.arrive_and_wait(); // returns only once all three blocks run at the same time
}

TEST(QtDispatchQueues, EachThreadsBlocksKeepTheirOrder)
{
    constexpr std::size_t THREADS = 4;
    qt::QtDispatchQueues queues;
    std::vector<std::vector<int>> ran(THREADS);
    {
        std::vector<std::jthread> threads(THREADS);
        for (std::size_t index = 0; index < THREADS; ++index) {
            threads[index] = std::jthread(submitNumbers, std::ref(queues), std::ref(ran[index]));
        }
    }
    bool all = false;
    queues.asyncMain([&all] { all = true; });
    ASSERT_TRUE(support::waitFor([&] { return all; }));

    std::vector<int> expected(BLOCKS);
    for (int number = 0; number < BLOCKS; ++number) {
        expected[static_cast<std::size_t>(number)] = number;
    }
    EXPECT_EQ(ran, std::vector<std::vector<int>>(THREADS, expected));
}

TEST(QtDispatchQueues, MainBlocksRunWhileABlockWaitsInALoopOfItsOwn)
{
    qt::QtDispatchQueues queues;
    QEventLoop inner;
    bool returned = false;
    queues.asyncMain([&] {
        inner.exec();
        returned = true;
    });
    queues.asyncMain([&] { inner.quit(); });

    EXPECT_TRUE(support::waitFor([&] { return returned; }));
}

TEST(QtDispatchQueues, BlocksThatStillWaitForTheMainQueueAreDroppedAtTheEnd)
{
    const auto witness = std::make_shared<int>(0);
    bool ran = false;
    {
        qt::QtDispatchQueues queues;
        queues.asyncMain([witness, &ran] { ran = true; });
        EXPECT_EQ(witness.use_count(), 2);
    }
    QCoreApplication::processEvents();

    EXPECT_FALSE(ran);
    EXPECT_EQ(witness.use_count(), 1);
}

TEST(QtDispatchQueues, TheEndWaitsForGlobalBlocks)
{
    bool finished = false;
    std::latch started(1);
    auto queues = std::make_unique<qt::QtDispatchQueues>();
    queues->asyncGlobal([&started, &finished, borrowed = queues.get()] {
        started.count_down();
        borrowed->asyncMain([] {});
        finished = true;
    });
    started.wait();
    queues.reset();

    EXPECT_TRUE(finished);
}
