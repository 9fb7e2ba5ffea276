// One thread that waits for descriptors, points in time and tasks, and runs their handlers one at a
// time. `post` and `postAfter` may be called from any thread; the rest on the thread itself or
// before `start`. Handlers must not throw. Without the kernel objects it stands on it is fatal.
#pragma once

#include "linux/descriptors/FileDescriptor.h"

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>

namespace proc {

class PollThread
{
public:
    using Task = std::function<void()>;
    using Clock = std::chrono::steady_clock;

    PollThread();
    PollThread(const PollThread&) = delete;
    PollThread& operator=(const PollThread&) = delete;
    PollThread(PollThread&&) = delete;
    PollThread& operator=(PollThread&&) = delete;
    ~PollThread();

    void start();

    /// Ends the thread and waits for it. What is posted but has not run yet is dropped.
    void stop();

    /// Tasks run in the order in which they were posted.
    void post(Task task);

    void postAfter(std::chrono::milliseconds delay, Task task);

    /// Calls `readable` whenever there is something to read. The descriptor stays the caller's.
    void watch(int descriptor, Task readable);

    void unwatch(int descriptor);

private:
    void run();
    bool stopped();
    void runHandlers();
    void runTasks();
    void runTimers();
    [[nodiscard]] int timeout() const;

    descriptors::FileDescriptor epoll;
    descriptors::FileDescriptor wake;
    std::map<int, std::shared_ptr<Task>> handlers;
    std::multimap<Clock::time_point, Task> timers;
    std::mutex mutex;
    std::deque<Task> tasks; // guarded by the mutex, as is `stopping`
    bool stopping = false;
    std::thread thread;
};

} // namespace proc
