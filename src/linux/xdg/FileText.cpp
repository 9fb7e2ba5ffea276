#include "linux/xdg/FileText.h"

#include "linux/descriptors/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace xdg {

namespace {

constexpr off_t LARGEST_FILE = off_t{1024} * 1024;

std::int64_t nanoseconds(const timespec& time)
{
    constexpr std::int64_t A_SECOND = 1'000'000'000;
    return std::int64_t{time.tv_sec} * A_SECOND + time.tv_nsec;
}

} // namespace

std::optional<FileStamp> stampOf(const std::string& path)
{
    struct stat status
    {
    };

    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return FileStamp{
        .device = status.st_dev,
        .number = status.st_ino,
        .size = status.st_size,
        .modified = nanoseconds(status.st_mtim),
        .changed = nanoseconds(status.st_ctim)};
}

std::optional<FolderIdentity> identityOf(const std::string& folder)
{
    struct stat status
    {
    };

    if (::stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) {
        return std::nullopt;
    }
    return FolderIdentity(status.st_dev, status.st_ino);
}

std::optional<std::string> readText(const std::string& path)
{
    // Without blocking: a pipe in the folder must not hold anything up.
    const descriptors::FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));

    struct stat status
    {
    };

    if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > LARGEST_FILE) {
        return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t filled = 0;
    while (filled < text.size()) {
        const ssize_t size = ::read(file.get(), text.data() + filled, text.size() - filled);
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size <= 0) {
            break;
        }
        filled += static_cast<std::size_t>(size);
    }
    text.resize(filled);
    return text;
}

FolderNames folderNames(const std::string& folder)
{
    FolderNames names;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        const bool isFolder = entry->is_directory(ignored);
        (isFolder ? names.folders : names.files).push_back(entry->path().filename().string());
    }
    std::sort(names.files.begin(), names.files.end());
    std::sort(names.folders.begin(), names.folders.end());
    return names;
}

} // namespace xdg
