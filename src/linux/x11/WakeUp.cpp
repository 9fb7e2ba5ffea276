#include "linux/x11/WakeUp.h"

#include "platform/Fatal.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace x11 {

WakeUp::WakeUp() : counter(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (!counter.isOpen()) {
        platform::fatal("no descriptor left for waking a thread up");
    }
}

void WakeUp::signal() const
{
    const std::uint64_t one = 1;
    // The only way to fail is a counter that is full, which wakes the thread as well.
    (void)!write(counter.get(), &one, sizeof one);
}

void WakeUp::waitWith(const Connection& connection, std::optional<Clock::time_point> until) const
{
    timespec left{};
    if (until.has_value()) {
        constexpr std::int64_t SECOND = 1'000'000'000;
        const std::int64_t nanoseconds =
            std::max<std::int64_t>(std::chrono::nanoseconds(*until - Clock::now()).count(), 0);
        left = {nanoseconds / SECOND, nanoseconds % SECOND};
    }
    std::array<pollfd, 2> sources{{
        {xcb_get_file_descriptor(connection.get()), POLLIN, 0},
        {counter.get(), POLLIN, 0},
    }};
    ppoll(sources.data(), sources.size(), until.has_value() ? &left : nullptr, nullptr);
    clear();
}

void WakeUp::waitAlone() const
{
    pollfd source{counter.get(), POLLIN, 0};
    poll(&source, 1, -1);
    clear();
}

void WakeUp::clear() const
{
    std::uint64_t count = 0;
    (void)!read(counter.get(), &count, sizeof count); // nothing to read: nobody signalled
}

} // namespace x11
