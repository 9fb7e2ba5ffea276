#include "desktop/ChildProcess.h"
#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"
#include "linux/proc/ProcessExits.h"
#include "processes/Dialogue.h"
#include "processes/Recorder.h"

#include <future>

#include <gtest/gtest.h>

namespace {

class ProcessExitsTest : public testing::Test
{
protected:
    ProcessExitsTest()
    {
        exits.onExit = [this](pid_t pid, std::uint64_t startTime) { ended.add({pid, startTime}); };
        thread.start();
    }

    void TearDown() override { thread.stop(); }

    void watch(pid_t pid, std::uint64_t startTime)
    {
        thread.post([this, pid, startTime] { exits.watch(pid, startTime); });
    }

    bool waitForEnd(pid_t pid, std::uint64_t startTime)
    {
        return ended.waitForOne([&](const auto& end) { return end == std::pair(pid, startTime); });
    }

    proc::ProcFilesystem filesystem;
    proc::PollThread thread;
    proc::ProcessExits exits{thread, filesystem};
    processes::Recorder<std::pair<pid_t, std::uint64_t>> ended;
};

} // namespace

TEST_F(ProcessExitsTest, EndIsReportedOnceThoughWatchedTwice)
{
    desktop::ChildProcess child({"/bin/sleep", "60"});
    const pid_t pid = child.id();
    const std::uint64_t startTime = filesystem.status(pid)->startTime;
    watch(pid, startTime);
    watch(pid, startTime);
    std::promise<void> watched;
    thread.post([&] { watched.set_value(); });
    watched.get_future().wait();

    child.end();

    ASSERT_TRUE(waitForEnd(pid, startTime));
    desktop::ChildProcess other({"/bin/sleep", "60"});
    const pid_t later = other.id();
    const std::uint64_t laterStart = filesystem.status(later)->startTime;
    watch(later, laterStart);
    other.end();
    ASSERT_TRUE(waitForEnd(later, laterStart));
    EXPECT_EQ(ended.all().size(), 2U);
}

TEST_F(ProcessExitsTest, ProcessThatIsGoneAlreadyIsReportedAtOnce)
{
    desktop::ChildProcess child({"/bin/sleep", "60"});
    const pid_t pid = child.id();
    const std::uint64_t startTime = filesystem.status(pid)->startTime;
    child.end();

    watch(pid, startTime);

    EXPECT_TRUE(waitForEnd(pid, startTime));
}

TEST_F(ProcessExitsTest, AnotherProcessWithTheSameNumberIsNotMistakenForIt)
{
    const desktop::ChildProcess child({"/bin/sleep", "60"});

    watch(child.id(), 1);

    EXPECT_TRUE(waitForEnd(child.id(), 1));
}

TEST_F(ProcessExitsTest, ProcessThatNobodyWaitedForHasEnded)
{
    const desktop::ChildProcess child({"/bin/true"});
    const auto status = filesystem.status(child.id());
    ASSERT_TRUE(status.has_value());

    watch(child.id(), status->startTime);

    EXPECT_TRUE(waitForEnd(child.id(), status->startTime));
}

TEST_F(ProcessExitsTest, FirstThreadThatEndsBeforeTheOthersDoesNotEndTheProcess)
{
    processes::Dialogue program({FIRST_THREAD_ENDS}, {});
    const pid_t pid = program.process().id();
    const auto status = filesystem.status(pid);
    ASSERT_TRUE(status.has_value());
    const std::uint64_t startTime = status->startTime;
    const auto firstThreadEnded = [&] {
        const auto now = filesystem.status(pid);
        return now.has_value() && now->state == 'Z';
    };
    ASSERT_TRUE(desktop::waitUntil(firstThreadEnded, processes::PATIENCE));

    EXPECT_TRUE(filesystem.alive(pid, startTime));
    watch(pid, startTime);
    program.say("end");

    EXPECT_TRUE(waitForEnd(pid, startTime));
    EXPECT_FALSE(filesystem.alive(pid, startTime));
}

namespace {

/// Where there are no descriptors left for processes, and what /proc says is the test's.
class ProcessExitsWithoutDescriptors : public testing::Test
{
protected:
    static constexpr pid_t PROCESS = 10;

    ProcessExitsWithoutDescriptors()
    {
        exits.onExit = [this](pid_t pid, std::uint64_t startTime) { ended.add({pid, startTime}); };
        thread.start();
    }

    void TearDown() override { thread.stop(); }

    void setProcess(std::uint64_t startTime) const
    {
        folder.write(
            "10/stat",
            "10 (x) S 1 5 6 0 8 9 10 11 12 13 14 15 16 17 18 19 20 0 " + std::to_string(startTime) +
                " 22\n"
        );
    }

    void watch(std::uint64_t startTime)
    {
        thread.post([this, startTime] { exits.watch(PROCESS, startTime); });
    }

    /// Returns when the thread has looked at every process that was watched before this call.
    void letItLook()
    {
        std::promise<void> looked;
        thread.postAfter(std::chrono::milliseconds(250), [&] { looked.set_value(); });
        looked.get_future().wait();
    }

    using End = std::pair<pid_t, std::uint64_t>;

    bool waitForEnd(std::uint64_t startTime)
    {
        return ended.waitForOne([&](const End& end) { return end == End(PROCESS, startTime); });
    }

    desktop::TemporaryFolder folder;
    proc::ProcFilesystem filesystem{::getuid(), folder.path()};
    proc::PollThread thread;
    proc::ProcessExits exits{
        thread, filesystem, [](pid_t /*process*/) { return descriptors::FileDescriptor(); }};
    processes::Recorder<End> ended;
};

} // namespace

TEST_F(ProcessExitsWithoutDescriptors, EndIsNoticedByLooking)
{
    setProcess(1);
    watch(1);
    letItLook();
    EXPECT_TRUE(ended.all().empty());

    std::filesystem::remove_all(folder.path("10"));
    EXPECT_TRUE(waitForEnd(1));
}

TEST_F(ProcessExitsWithoutDescriptors, NumberThatWasGivenToAnotherProcessEndsTheFirstOnly)
{
    setProcess(1);
    watch(1);
    letItLook();
    setProcess(2);
    watch(2);

    ASSERT_TRUE(waitForEnd(1));
    letItLook();
    EXPECT_EQ(ended.all().size(), 1U);

    std::filesystem::remove_all(folder.path("10"));
    EXPECT_TRUE(waitForEnd(2));
    letItLook();
    EXPECT_EQ(ended.all().size(), 2U);
}
