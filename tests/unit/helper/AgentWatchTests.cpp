#include "helper/AgentWatch.h"
#include "helper/EventLoop.h"
#include "helper/Signals.h"

#include <csignal>

#include <gtest/gtest.h>
#include <unistd.h>

namespace {

descriptors::FileDescriptor none(pid_t /*process*/)
{
    return {};
}

/// What the watch tells of a child of this process.
std::optional<int> endOfChild(helper::AgentWatch::OpenProcess open, void (*ending)())
{
    helper::Signals signals;
    helper::AgentWatch watch(open);
    helper::EventLoop loop;
    std::optional<int> told;
    signals.onChildEnded = [&watch] { watch.childMayHaveEnded(); };
    watch.onEnded = [&](std::optional<int> status) {
        told = status;
        loop.finish(0);
    };
    loop.add(signals);
    loop.add(watch);
    const pid_t child = ::fork();
    if (child == 0) {
        ending();
    }
    watch.adopt(child);
    loop.run();
    return told;
}

void exitWithSeven()
{
    ::_exit(7);
}

void die()
{
    ::kill(::getpid(), SIGKILL);
    ::pause();
}

} // namespace

TEST(AgentWatch, TellsWithWhichStatusAChildEnds)
{
    EXPECT_EQ(endOfChild(descriptors::openProcess, exitWithSeven), 7);
    EXPECT_EQ(endOfChild(descriptors::openProcess, die), std::nullopt);
}

TEST(AgentWatch, TellsItToWhereTheSystemHasNoDescriptorOfAProcess)
{
    EXPECT_EQ(endOfChild(none, exitWithSeven), 7);
    EXPECT_EQ(endOfChild(none, die), std::nullopt);
}
