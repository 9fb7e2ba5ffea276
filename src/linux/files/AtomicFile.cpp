#include "linux/files/AtomicFile.h"

#include "linux/descriptors/FileDescriptor.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include <fcntl.h>
#include <unistd.h>

namespace files {

namespace {

bool writeAll(int file, std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return true;
}

/// False, always; the reason of the failure before it stays.
bool removeFailed(const std::string& path)
{
    const int reason = errno;
    ::unlink(path.c_str());
    errno = reason;
    return false;
}

} // namespace

std::string draftOf(const std::string& path)
{
    return path + "." + std::to_string(::getpid()) + ".new";
}

bool writeNew(const std::string& path, std::span<const std::byte> bytes, unsigned mode)
{
    ::unlink(path.c_str());
    const descriptors::FileDescriptor file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode)
    );
    if (file.isOpen() && writeAll(file.get(), bytes) && ::fsync(file.get()) == 0) {
        return true;
    }
    return removeFailed(path);
}

bool replaceFile(const std::string& path, std::span<const std::byte> bytes, unsigned mode)
{
    const std::string draft = draftOf(path);
    if (!writeNew(draft, bytes, mode)) {
        return false;
    }
    if (::rename(draft.c_str(), path.c_str()) != 0) {
        return removeFailed(draft);
    }
    return flushFolder(std::filesystem::path(path).parent_path());
}

bool flushFolder(const std::string& path)
{
    const descriptors::FileDescriptor folder(
        ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)
    );
    // Some file systems have nothing to do here and say so.
    return folder.isOpen() && (::fsync(folder.get()) == 0 || errno == EINVAL);
}

} // namespace files
