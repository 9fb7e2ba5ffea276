#include "linux/process/StreamLog.h"

#include "linux/process/LongestWait.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string>

#include <fcntl.h>
#include <poll.h>

namespace process {

namespace {

constexpr int LONGEST_WAIT_MS = static_cast<int>(LONGEST_WAIT.count());

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

bool takesBytes(int descriptor, int waitMilliseconds)
{
    pollfd entry{descriptor, POLLOUT, 0};
    return poll(&entry, 1, waitMilliseconds) == 1 && (entry.revents & POLLOUT) != 0;
}

/// What would end a line or move the cursor. Bytes of UTF-8 beyond ASCII are none of these.
bool isControl(char character)
{
    constexpr char DELETE = 0x7f;
    return (character >= 0 && character < ' ' && character != '\t') || character == DELETE;
}

} // namespace

StreamLog::StreamLog(int outputDescriptor, int errorDescriptor)
    : output{outputDescriptor},
      error{errorDescriptor}
{
    bindIfClosed(outputDescriptor);
    bindIfClosed(errorDescriptor);
}

void StreamLog::line(std::string_view text)
{
    write(output, text);
}

void StreamLog::diagnostic(std::string_view text)
{
    write(error, text);
}

void StreamLog::write(Stream& stream, std::string_view text)
{
    std::string bytes(text);
    // a name must not forge a second line
    std::replace_if(bytes.begin(), bytes.end(), isControl, ' ');
    bytes += '\n';

    const std::scoped_lock lock(mutex);
    std::string_view rest = bytes;
    while (!rest.empty()) {
        stream.isStuck = !takesBytes(stream.descriptor, stream.isStuck ? 0 : LONGEST_WAIT_MS);
        if (stream.isStuck) {
            return;
        }
        // a pipe that takes bytes takes this many without blocking
        const ssize_t written =
            ::write(stream.descriptor, rest.data(), std::min<std::size_t>(rest.size(), PIPE_BUF));
        if (written == -1 && errno != EINTR && errno != EAGAIN) {
            return;
        }
        rest.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
}

} // namespace process
