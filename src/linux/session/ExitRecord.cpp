#include "linux/session/ExitRecord.h"

#include "linux/session/SessionMessage.h"
#include "linux/session/SessionName.h"

#include <array>
#include <charconv>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace session {

void writeExitRecord(
    const descriptors::FileDescriptor& directory, const std::string& name, ExitRecord record
)
{
    constexpr int FLAGS = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW;
    const std::string file = exitName(name);
    const descriptors::FileDescriptor made(
        ::openat(directory.get(), file.c_str(), FLAGS, S_IRUSR | S_IWUSR)
    );
    const std::string text = std::to_string(record.process) + ' ' + exitMessage(record.status);
    // Nobody is left to be told when this fails.
    [[maybe_unused]] const ssize_t written = ::write(made.get(), text.data(), text.size());
}

std::optional<ExitRecord>
readExitRecord(const descriptors::FileDescriptor& directory, const std::string& name)
{
    const std::string file = exitName(name);
    const descriptors::FileDescriptor found(
        ::openat(directory.get(), file.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK)
    );
    std::array<char, 64> buffer{};
    const ssize_t size = ::read(found.get(), buffer.data(), buffer.size());
    if (size <= 0) {
        return std::nullopt;
    }
    const std::string_view text(buffer.data(), static_cast<std::size_t>(size));
    const std::size_t blank = text.find(' ');
    ExitRecord record;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), record.process);
    if (blank == std::string_view::npos || error != std::errc() || end != text.data() + blank) {
        return std::nullopt;
    }
    const std::optional<int> status = exitStatusIn(std::string(text.substr(blank + 1)));
    if (!status.has_value()) {
        return std::nullopt;
    }
    record.status = *status;
    return record;
}

void removeExitRecord(const descriptors::FileDescriptor& directory, const std::string& name)
{
    ::unlinkat(directory.get(), exitName(name).c_str(), 0);
}

} // namespace session
