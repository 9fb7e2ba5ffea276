#include "linux/proc/ExecutableWatch.h"

#include "platform/Call.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/fanotify.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace proc {

namespace {

std::string folderOf(const std::string& path)
{
    return path.substr(0, path.rfind('/') + 1);
}

} // namespace

ExecutableWatch::ExecutableWatch(PollThread& thread, std::function<int()> open)
    : thread(thread),
      open(std::move(open))
{
}

int ExecutableWatch::openGroup()
{
    return ::fanotify_init(
        FAN_CLASS_NOTIF | FAN_REPORT_FID | FAN_CLOEXEC | FAN_NONBLOCK, O_RDONLY | O_CLOEXEC
    );
}

bool ExecutableWatch::start()
{
    group = descriptors::FileDescriptor(open());
    folders = descriptors::FileDescriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    if (!group.isOpen() || !folders.isOpen()) {
        return false;
    }
    thread.watch(group.get(), [this] { receiveExecutions(); });
    thread.watch(folders.get(), [this] { receiveReplacements(); });
    return true;
}

void ExecutableWatch::setExecutables(const std::set<std::string>& paths)
{
    std::vector<std::string> gone;
    std::set_difference(
        executables.begin(), executables.end(), paths.begin(), paths.end(), std::back_inserter(gone)
    );
    for (const std::string& path : gone) {
        unmark(path);
    }
    executables = paths;
    for (const std::string& path : executables) {
        // The folder first, so that no replacement falls between the two.
        watchFolder(folderOf(path));
        mark(path);
    }
}

void ExecutableWatch::mark(const std::string& path)
{
    // A file that is not there, or on a file system without file handles, stays to the scan.
    ::fanotify_mark(group.get(), FAN_MARK_ADD, FAN_OPEN_EXEC, AT_FDCWD, path.c_str());
}

void ExecutableWatch::unmark(const std::string& path)
{
    ::fanotify_mark(group.get(), FAN_MARK_REMOVE, FAN_OPEN_EXEC, AT_FDCWD, path.c_str());
}

/// One that is missing is waited for in the nearest folder that is there.
bool ExecutableWatch::watchFolder(const std::string& folder)
{
    if (watchedFolders.contains(folder) || watchFolderThatIsThere(folder)) {
        return true;
    }
    // It may have come while the watch of the one above began.
    return folder.size() > 1 && watchFolder(folderOf(folder.substr(0, folder.size() - 1))) &&
           watchFolderThatIsThere(folder);
}

bool ExecutableWatch::watchFolderThatIsThere(const std::string& folder)
{
    const int watch = ::inotify_add_watch(
        folders.get(), folder.c_str(), IN_CREATE | IN_MOVED_TO | IN_MOVE_SELF | IN_ONLYDIR
    );
    if (watch >= 0) {
        folderOfWatch[watch] = folder;
        watchedFolders.insert(folder);
    }
    return watch >= 0;
}

void ExecutableWatch::watchBelow(const std::string& folder)
{
    for (auto path = executables.lower_bound(folder);
         path != executables.end() && path->starts_with(folder);
         ++path) {
        watchFolder(folderOf(*path));
        mark(*path);
    }
}

void ExecutableWatch::loseFolder(int watch)
{
    const auto lost = folderOfWatch.find(watch);
    if (lost == folderOfWatch.end()) {
        return;
    }
    const std::string folder = lost->second;
    folderOfWatch.erase(lost);
    watchedFolders.erase(folder);
    watchBelow(folder);
}

void ExecutableWatch::receiveExecutions()
{
    std::array<char, 4096> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
    bool any = false;
    while (::read(group.get(), buffer.data(), buffer.size()) > 0) {
        any = true;
    }
    if (any) {
        platform::call(onExecuted);
    }
}

void ExecutableWatch::receiveReplacements()
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): read fills it
    alignas(inotify_event) std::array<char, 4096> buffer;
    ssize_t size = 0;
    while ((size = ::read(folders.get(), buffer.data(), buffer.size())) > 0) {
        std::size_t offset = 0;
        while (offset < static_cast<std::size_t>(size)) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + offset, sizeof event);
            offset += sizeof event;
            receiveChange(event.wd, event.mask, event.len > 0 ? buffer.data() + offset : "");
            offset += event.len;
        }
    }
}

void ExecutableWatch::receiveChange(int watch, std::uint32_t mask, const std::string& name)
{
    if ((mask & IN_MOVE_SELF) != 0) {
        ::inotify_rm_watch(folders.get(), watch);
    }
    if ((mask & (IN_MOVE_SELF | IN_IGNORED)) != 0) {
        loseFolder(watch);
        return;
    }
    const auto folder = folderOfWatch.find(watch);
    if (folder == folderOfWatch.end()) {
        return;
    }
    const std::string path = folder->second + name;
    if ((mask & IN_ISDIR) != 0) {
        watchBelow(path + "/");
    } else if (executables.contains(path)) {
        mark(path);
    }
}

} // namespace proc
