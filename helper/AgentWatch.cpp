#include "helper/AgentWatch.h"

#include "linux/session/Programs.h"
#include "platform/Call.h"

#include <cerrno>
#include <utility>

#include <sys/wait.h>

namespace helper {

namespace {

std::optional<int> reap(pid_t child)
{
    int status = 0;
    pid_t result = 0;
    do {
        result = ::waitpid(child, &status, 0);
    } while (result < 0 && errno == EINTR);
    const bool exited = result == child && WIFEXITED(status);
    return exited ? std::optional<int>(WEXITSTATUS(status)) : std::nullopt;
}

} // namespace

bool AgentWatch::attach()
{
    other = session::SessionWatch::open(session::AGENT);
    return other != nullptr;
}

void AgentWatch::adopt(pid_t process)
{
    child = process;
    childEnd = openProcess(process);
}

void AgentWatch::childMayHaveEnded()
{
    if (child == 0 || childEnd.isOpen()) {
        return;
    }
    siginfo_t state = {};
    const bool ended =
        ::waitid(P_PID, static_cast<id_t>(child), &state, WEXITED | WNOHANG | WNOWAIT) == 0 &&
        state.si_pid == child;
    if (ended) {
        platform::call(onEnded, reap(std::exchange(child, 0)));
    }
}

pollfd AgentWatch::awaited() const
{
    return {other != nullptr ? other->fd() : childEnd.get(), POLLIN, 0};
}

void AgentWatch::wake()
{
    const std::optional<int> status = takeStatus();
    platform::call(onEnded, status);
}

std::optional<int> AgentWatch::takeStatus()
{
    if (other != nullptr) {
        const std::unique_ptr<session::SessionWatch> ended = std::move(other);
        return ended->exitStatus();
    }
    childEnd = descriptors::FileDescriptor();
    return reap(std::exchange(child, 0));
}

} // namespace helper
