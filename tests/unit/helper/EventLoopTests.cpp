#include "helper/EventLoop.h"

#include <array>
#include <functional>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using helper::Clock;

class PipeSource : public helper::EventSource
{
public:
    PipeSource() { EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0); }

    PipeSource(const PipeSource&) = delete;
    PipeSource& operator=(const PipeSource&) = delete;
    PipeSource(PipeSource&&) = delete;
    PipeSource& operator=(PipeSource&&) = delete;

    ~PipeSource() override
    {
        ::close(ends[0]);
        ::close(ends[1]);
    }

    void signal() const { EXPECT_EQ(::write(ends[1], "x", 1), 1); }

    pollfd awaited() const override { return {isOn ? ends[0] : -1, POLLIN, 0}; }

    std::optional<Clock::time_point> deadline() const override { return moment; }

    void wake() override { onWake(); }

    std::function<void()> onWake;
    std::optional<Clock::time_point> moment;
    bool isOn = true;

private:
    std::array<int, 2> ends{-1, -1};
};

} // namespace

TEST(EventLoop, ReturnsWhatItWasFinishedWith)
{
    helper::EventLoop loop;
    loop.finish(3);
    loop.finish(4);

    EXPECT_EQ(loop.run(), 3);
}

TEST(EventLoop, OfTwoThatAreReadyTheFirstAddedIsWokenAndMayEndItAll)
{
    PipeSource first;
    PipeSource second;
    helper::EventLoop loop;
    std::string order;
    first.onWake = [&] {
        order += "first";
        loop.finish(0);
    };
    second.onWake = [&] { order += "second"; };
    loop.add(first);
    loop.add(second);
    second.signal();
    first.signal();

    loop.run();
    EXPECT_EQ(order, "first");
}

TEST(EventLoop, ASourceThatWasSwitchedOffInTheSameTurnIsNotWoken)
{
    PipeSource first;
    PipeSource second;
    helper::EventLoop loop;
    int turns = 0;
    first.onWake = [&] {
        second.isOn = false;
        ++turns;
        if (turns == 2) {
            loop.finish(0);
        }
    };
    second.onWake = [] { ADD_FAILURE() << "was woken"; };
    loop.add(first);
    loop.add(second);
    first.signal();
    second.signal();

    EXPECT_EQ(loop.run(), 0);
}

TEST(EventLoop, WakesASourceAtItsMomentWithoutAnyDescriptor)
{
    PipeSource source;
    helper::EventLoop loop;
    source.isOn = false;
    source.moment = Clock::now() + std::chrono::milliseconds(20);
    Clock::time_point woken;
    source.onWake = [&] {
        woken = Clock::now();
        loop.finish(0);
    };
    loop.add(source);

    loop.run();
    EXPECT_GE(woken, *source.moment);
}
