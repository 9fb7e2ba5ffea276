#include "linux/xdg/FileText.h"

#include "linux/descriptors/FileDescriptor.h"

#include <algorithm>
#include <array>
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

/// As much of it as there is.
std::string readPart(int file, off_t place, off_t length)
{
    std::string text(static_cast<std::size_t>(length), '\0');
    std::size_t filled = 0;
    while (filled < text.size()) {
        const ssize_t size = ::pread(
            file, text.data() + filled, text.size() - filled, place + static_cast<off_t>(filled)
        );
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
    return readPart(file.get(), 0, status.st_size);
}

bool isCopyOf(const std::string& path, const std::string& otherPath)
{
    const std::optional<FileStamp> stamp = stampOf(path);
    const std::optional<FileStamp> other = stampOf(otherPath);
    if (!stamp || !other || stamp->size != other->size || stamp->size == 0) {
        return false;
    }
    const descriptors::FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    const descriptors::FileDescriptor otherFile(
        ::open(otherPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)
    );
    if (!file.isOpen() || !otherFile.isOpen()) {
        return false;
    }
    const off_t part = std::min(stamp->size, LARGEST_FILE);
    const std::array<off_t, 2> places{0, stamp->size - part};
    return std::all_of(places.begin(), places.end(), [&](off_t place) {
        const std::string text = readPart(file.get(), place, part);
        return text.size() == static_cast<std::size_t>(part) &&
               text == readPart(otherFile.get(), place, part);
    });
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
