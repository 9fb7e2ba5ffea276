#include "desktop/ChildProcess.h"
#include "linux/proc/ProcessConnector.h"
#include "processes/Recorder.h"

#include <algorithm>
#include <cmath>
#include <future>
#include <iostream>

#include <gtest/gtest.h>
#include <sys/mman.h>

namespace {

using Clock = std::chrono::steady_clock;

/// Declared behind what the thread uses, so that the thread ends before that does.
class ThreadEnd
{
public:
    explicit ThreadEnd(proc::PollThread& thread) : thread(thread) {}

    ThreadEnd(const ThreadEnd&) = delete;
    ThreadEnd& operator=(const ThreadEnd&) = delete;
    ThreadEnd(ThreadEnd&&) = delete;
    ThreadEnd& operator=(ThreadEnd&&) = delete;

    ~ThreadEnd() { thread.stop(); }

private:
    proc::PollThread& thread;
};

class ProcessConnectorTest : public testing::Test
{
protected:
    /// False where the kernel refuses.
    bool start(proc::ProcessConnectorOptions options = {})
    {
        connector = std::make_unique<proc::ProcessConnector>(thread, std::move(options));
        connector->onAccepted = [this] { answer.set_value(true); };
        connector->onRefused = [this](const std::string&) { answer.set_value(false); };
        connector->onLost = [this] { lost.add(true); };
        connector->onExec = [this](pid_t pid) { onExec(pid); };
        thread.post([this] { connector->start(); });
        thread.start();
        return answer.get_future().get();
    }

    void TearDown() override { thread.stop(); }

    proc::PollThread thread;
    std::unique_ptr<proc::ProcessConnector> connector;
    std::promise<bool> answer;
    processes::Recorder<bool> lost;
    std::function<void(pid_t)> onExec = [](pid_t) {};
};

} // namespace

TEST_F(ProcessConnectorTest, OverflowIsReportedAsLoss)
{
    std::promise<void> overflown;
    std::future<void> released = overflown.get_future();
    processes::Recorder<pid_t> seen;
    const ThreadEnd end(thread);
    onExec = [&](pid_t pid) {
        if (seen.all().empty()) {
            seen.add(pid);
            released.wait(); // until the kernel has more than it may keep for us
        }
    };
    proc::ProcessConnectorOptions options;
    options.receiveBuffer = 1; // the kernel gives its least
    if (!start(std::move(options))) {
        GTEST_SKIP() << "this kernel refuses the process connector";
    }

    for (int count = 0; count < 300; ++count) {
        desktop::ChildProcess({"/bin/true"}).waitForEnd(std::chrono::seconds(10));
    }
    overflown.set_value();

    EXPECT_TRUE(lost.waitForOne([](bool) { return true; }));
}

namespace {

/// What a child tells: the moment just before it executes something.
struct Moment
{
    std::atomic<Clock::time_point::rep> before{0};
};

/// Ends the memory that parent and child share.
struct Unmap
{
    void operator()(Moment* moment) const { ::munmap(moment, sizeof(Moment)); }
};

std::unique_ptr<Moment, Unmap> sharedMoment()
{
    void* memory =
        ::mmap(nullptr, sizeof(Moment), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return std::unique_ptr<Moment, Unmap>(memory == MAP_FAILED ? nullptr : new (memory) Moment);
}

pid_t executeAndTell(Moment& moment)
{
    const pid_t pid = ::fork();
    if (pid == 0) {
        moment.before = Clock::now().time_since_epoch().count();
        ::execl("/bin/true", "true", nullptr);
        ::_exit(127);
    }
    return pid;
}

using Heard = std::pair<pid_t, Clock::time_point>;

/// Microseconds from just before an exec to its event.
double measureOnce(Moment& moment, processes::Recorder<Heard>& seen)
{
    const pid_t pid = executeAndTell(moment);
    Clock::time_point heard;
    EXPECT_TRUE(seen.waitForOne([&](const Heard& event) {
        heard = event.second;
        return event.first == pid;
    }));
    ::waitpid(pid, nullptr, 0);
    const auto latency = heard - Clock::time_point(Clock::duration(moment.before.load()));
    return std::chrono::duration<double, std::micro>(latency).count();
}

} // namespace

TEST_F(ProcessConnectorTest, LatencyFromExecToEventIsPrinted)
{
    const auto moment = sharedMoment();
    ASSERT_NE(moment, nullptr);
    processes::Recorder<Heard> seen;
    const ThreadEnd end(thread);
    onExec = [&](pid_t pid) { seen.add({pid, Clock::now()}); };
    if (!start()) {
        GTEST_SKIP() << "this kernel refuses the process connector";
    }

    std::vector<double> latencies;
    for (int run = 0; run < 300; ++run) {
        latencies.push_back(measureOnce(*moment, seen));
    }

    std::sort(latencies.begin(), latencies.end());
    const double median = latencies[latencies.size() / 2];
    std::cout << "exec to event: median " << std::lround(median) << " us, p99 "
              << std::lround(latencies[latencies.size() * 99 / 100]) << " us\n";
    EXPECT_LT(median, 10000.0);
}
