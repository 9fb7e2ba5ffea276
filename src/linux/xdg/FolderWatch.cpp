#include "linux/xdg/FolderWatch.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <utility>

#include <sys/inotify.h>
#include <unistd.h>

namespace xdg {

namespace {

constexpr std::uint32_t CONTENT = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO |
                                  IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr int DEEPEST_FOLDER = 8;

} // namespace

bool FolderWatch::setFolders(const std::set<std::string>& folders)
{
    if (notifications.valid()) {
        thread.unwatch(notifications.get());
    }
    notifications = proc::FileDescriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    if (!notifications.valid()) {
        return false;
    }
    thread.watch(notifications.get(), [this] { receive(); });
    bool all = true;
    for (const std::string& folder : folders) {
        all = watchTree(folder, 0) && all;
    }
    return all;
}

bool FolderWatch::watchTree(const std::string& folder, int depth)
{
    const int watch = ::inotify_add_watch(
        notifications.get(), folder.c_str(), CONTENT | IN_ONLYDIR | IN_MASK_ADD
    );
    if (watch < 0) {
        const bool missing = errno == ENOENT || errno == ENOTDIR;
        return missing ? watchNearest(folder) : errno == EACCES;
    }
    bool all = true;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end;
         !error && entry != end && depth < DEEPEST_FOLDER;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->is_directory(ignored)) {
            all = watchTree(entry->path().string(), depth + 1) && all;
        }
    }
    return all;
}

/// For a folder that is missing: the nearest one above it that is not.
bool FolderWatch::watchNearest(std::string folder)
{
    while (folder.size() > 1) {
        folder = std::filesystem::path(folder).parent_path().string();
        const int watch = ::inotify_add_watch(
            notifications.get(),
            folder.c_str(),
            IN_CREATE | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR | IN_MASK_ADD
        );
        if (watch >= 0) {
            return true;
        }
    }
    return false;
}

void FolderWatch::receive()
{
    std::array<char, 4096> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
    bool any = false;
    while (::read(notifications.get(), buffer.data(), buffer.size()) > 0) {
        any = true;
    }
    if (any && onChanged) {
        onChanged();
    }
}

} // namespace xdg
