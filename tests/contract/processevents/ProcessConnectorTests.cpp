#include "desktop/ChildProcess.h"
#include "linux/proc/ProcessConnector.h"
#include "processes/Recorder.h"

#include <chrono>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace {

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
