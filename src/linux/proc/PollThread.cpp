#include "linux/proc/PollThread.h"

#include "platform/Fatal.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <utility>

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace proc {

PollThread::PollThread()
    : epoll(::epoll_create1(EPOLL_CLOEXEC)),
      wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (!epoll.isOpen() || !wake.isOpen()) {
        platform::fatal("no descriptors left for a waiting thread");
    }
    watch(wake.get(), [this] {
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t size = ::read(wake.get(), &count, sizeof count);
    });
}

PollThread::~PollThread()
{
    stop();
}

void PollThread::start()
{
    if (!thread.joinable()) {
        thread = std::thread([this] { run(); });
    }
}

void PollThread::stop()
{
    {
        const std::scoped_lock lock(mutex);
        stopping = true;
    }
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t size = ::write(wake.get(), &one, sizeof one);
    if (thread.joinable()) {
        thread.join();
    }
}

void PollThread::post(Task task)
{
    {
        const std::scoped_lock lock(mutex);
        tasks.push_back(std::move(task));
    }
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t size = ::write(wake.get(), &one, sizeof one);
}

void PollThread::postAfter(std::chrono::milliseconds delay, Task task)
{
    post([this, due = Clock::now() + delay, task = std::move(task)]() mutable {
        timers.emplace(due, std::move(task));
    });
}

void PollThread::watch(int descriptor, Task readable)
{
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.fd = descriptor;
    if (::epoll_ctl(epoll.get(), EPOLL_CTL_ADD, descriptor, &event) == 0) {
        handlers[descriptor] = std::make_shared<Task>(std::move(readable));
    }
}

void PollThread::unwatch(int descriptor)
{
    ::epoll_ctl(epoll.get(), EPOLL_CTL_DEL, descriptor, nullptr);
    handlers.erase(descriptor);
}

void PollThread::run()
{
    while (!stopped()) {
        runHandlers();
        runTasks();
        runTimers();
    }
}

bool PollThread::stopped()
{
    const std::scoped_lock lock(mutex);
    return stopping;
}

void PollThread::runHandlers()
{
    std::array<epoll_event, 16> events{};
    const int count =
        ::epoll_wait(epoll.get(), events.data(), static_cast<int>(events.size()), timeout());
    if (count < 0 && errno != EINTR) {
        platform::fatal("a waiting thread cannot wait");
    }
    for (int index = 0; index < count; ++index) {
        // A handler before this one may have taken the descriptor away.
        const auto found = handlers.find(events.at(static_cast<std::size_t>(index)).data.fd);
        if (found != handlers.end()) {
            const std::shared_ptr<Task> handler = found->second;
            (*handler)();
        }
    }
}

void PollThread::runTasks()
{
    std::deque<Task> due;
    {
        const std::scoped_lock lock(mutex);
        due.swap(tasks);
    }
    for (const Task& task : due) {
        task();
    }
}

void PollThread::runTimers()
{
    const Clock::time_point now = Clock::now();
    while (!timers.empty() && timers.begin()->first <= now) {
        const auto due = timers.extract(timers.begin());
        due.mapped()();
    }
}

int PollThread::timeout() const
{
    if (timers.empty()) {
        return -1;
    }
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(timers.begin()->first - Clock::now());
    return left.count() < 0 ? 0 : static_cast<int>(left.count());
}

} // namespace proc
