#include "linux/proc/PollThread.h"

#include <future>

#include <gtest/gtest.h>
#include <unistd.h>

TEST(PollThread, TasksRunInTheOrderInWhichTheyWerePosted)
{
    proc::PollThread thread;
    std::vector<int> order;
    std::promise<void> done;

    for (int index = 0; index < 100; ++index) {
        thread.post([&order, index] { order.push_back(index); });
    }
    thread.post([&done] { done.set_value(); });
    thread.start();
    done.get_future().wait();

    ASSERT_EQ(order.size(), 100U);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST(PollThread, LaterPointsInTimeComeLater)
{
    proc::PollThread thread;
    std::vector<std::string> order;
    std::promise<void> done;

    thread.postAfter(std::chrono::milliseconds(20), [&] {
        order.emplace_back("second");
        done.set_value();
    });
    thread.postAfter(std::chrono::milliseconds(1), [&] { order.emplace_back("first"); });
    thread.start();
    done.get_future().wait();

    EXPECT_EQ(order, (std::vector<std::string>{"first", "second"}));
}

TEST(PollThread, ReadableDescriptorCallsItsHandlerUntilItIsUnwatched)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    proc::PollThread thread;
    std::promise<char> read;

    thread.watch(ends[0], [&] {
        char character = 0;
        [[maybe_unused]] const ssize_t size = ::read(ends[0], &character, 1);
        thread.unwatch(ends[0]);
        read.set_value(character);
    });
    thread.start();
    ASSERT_EQ(::write(ends[1], "ab", 2), 2);

    EXPECT_EQ(read.get_future().get(), 'a');
    thread.stop();
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(PollThread, StoppedThreadRunsNothingMore)
{
    proc::PollThread thread;
    thread.start();
    thread.stop();
    bool ran = false;

    thread.post([&] { ran = true; });
    thread.stop();

    EXPECT_FALSE(ran);
}
