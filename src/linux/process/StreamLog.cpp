#include "linux/process/StreamLog.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <ctime>
#include <string>

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>

namespace process {

namespace {

constexpr int LONGEST_WAIT_MS = 50;

/// Keeps the signal of a broken pipe from this thread while it lives. Ignoring it for the whole
/// process would be inherited by every program that the agent starts.
class BrokenPipeShield
{
public:
    BrokenPipeShield()
    {
        sigemptyset(&brokenPipe);
        sigaddset(&brokenPipe, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        wasPending = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &brokenPipe, &before);
    }

    BrokenPipeShield(const BrokenPipeShield&) = delete;
    BrokenPipeShield& operator=(const BrokenPipeShield&) = delete;
    BrokenPipeShield(BrokenPipeShield&&) = delete;
    BrokenPipeShield& operator=(BrokenPipeShield&&) = delete;

    ~BrokenPipeShield()
    {
        if (!wasPending) {
            constexpr timespec AT_ONCE{};
            while (sigtimedwait(&brokenPipe, nullptr, &AT_ONCE) == -1 && errno == EINTR) {
            }
        }
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }

private:
    sigset_t brokenPipe{};
    sigset_t before{};
    bool wasPending = false;
};

void bindIfClosed(int descriptor)
{
    if (fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) {
        return;
    }
    const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (null == -1 || null == descriptor) {
        return;
    }
    dup2(null, descriptor);
    close(null);
}

bool takesBytes(int descriptor)
{
    pollfd entry{descriptor, POLLOUT, 0};
    return poll(&entry, 1, LONGEST_WAIT_MS) == 1 && (entry.revents & POLLOUT) != 0;
}

} // namespace

StreamLog::StreamLog(int outputDescriptor, int errorDescriptor)
    : outputDescriptor(outputDescriptor),
      errorDescriptor(errorDescriptor)
{
    bindIfClosed(outputDescriptor);
    bindIfClosed(errorDescriptor);
}

void StreamLog::line(std::string_view text)
{
    write(outputDescriptor, text);
}

void StreamLog::diagnostic(std::string_view text)
{
    write(errorDescriptor, text);
}

void StreamLog::write(int descriptor, std::string_view text)
{
    std::string bytes(text);
    std::replace(bytes.begin(), bytes.end(), '\n', ' '); // a name must not forge a second line
    bytes += '\n';

    const std::scoped_lock lock(mutex);
    const BrokenPipeShield shield;
    std::string_view rest = bytes;
    while (!rest.empty() && takesBytes(descriptor)) {
        // a pipe that takes bytes takes this many without blocking
        const ssize_t written =
            ::write(descriptor, rest.data(), std::min<std::size_t>(rest.size(), PIPE_BUF));
        if (written == -1 && errno != EINTR && errno != EAGAIN) {
            return;
        }
        rest.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
}

} // namespace process
