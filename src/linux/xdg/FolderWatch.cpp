#include "linux/xdg/FolderWatch.h"

#include "linux/xdg/LinkPlaces.h"
#include "platform/Call.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include <sys/inotify.h>
#include <unistd.h>

namespace xdg {

namespace {

constexpr std::uint32_t CONTENT = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO |
                                  IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t ARRIVAL = IN_CREATE | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t TURN = ARRIVAL | IN_DELETE | IN_MOVED_FROM;

} // namespace

void FolderChanges::add(const FolderChanges& more)
{
    folders.insert(more.folders.begin(), more.folders.end());
    names.insert(more.names.begin(), more.names.end());
    everything = everything || more.everything;
}

bool FolderWatch::start()
{
    notifications = descriptors::FileDescriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    if (!notifications.isOpen()) {
        return false;
    }
    thread.watch(notifications.get(), [this] { receive(); });
    return true;
}

bool FolderWatch::watch(const std::string& folder)
{
    const bool linksWatched = watchLinks(folder);
    const int number = ::inotify_add_watch(
        notifications.get(), folder.c_str(), CONTENT | IN_ONLYDIR | IN_MASK_ADD
    );
    if (number >= 0) {
        // The folder to which it led before is another one.
        for (auto& [other, folders] : watched) {
            folders.erase(folder);
        }
        watched[number].insert(folder);
        return linksWatched;
    }
    const bool missing = errno == ENOENT || errno == ENOTDIR;
    return missing ? watchNearest(folder) : errno == EACCES;
}

bool FolderWatch::watchLinks(const std::string& path)
{
    bool all = true;
    for (const LinkPlace& link : linkPlaces(path)) {
        const int number = ::inotify_add_watch(
            notifications.get(), link.folder.c_str(), TURN | IN_ONLYDIR | IN_MASK_ADD
        );
        if (number >= 0) {
            links[number].insert(link.name);
        }
        all = all && (number >= 0 || errno == EACCES || errno == ENOENT);
    }
    return all;
}

bool FolderWatch::watchNearest(const std::string& missing)
{
    std::filesystem::path folder = missing;
    while (folder.has_relative_path()) {
        const std::string awaited = folder.filename().string();
        folder = folder.parent_path();
        const int number = ::inotify_add_watch(
            notifications.get(), folder.c_str(), ARRIVAL | IN_ONLYDIR | IN_MASK_ADD
        );
        if (number >= 0) {
            standingForMissing[number][missing] = awaited;
            return true;
        }
    }
    return false;
}

void FolderWatch::receive()
{
    constexpr std::size_t ROOM = 16384;
    std::array<char, ROOM> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): read fills it
    FolderChanges changes;
    for (;;) {
        const ssize_t size = ::read(notifications.get(), buffer.data(), buffer.size());
        if (size <= 0) {
            break;
        }
        std::string_view rest(buffer.data(), static_cast<std::size_t>(size));
        while (rest.size() >= sizeof(inotify_event)) {
            rest.remove_prefix(take(rest, changes));
        }
    }
    const bool any = changes.everything || !changes.folders.empty();
    if (any) {
        platform::call(onChanged, changes);
    }
}

/// One notification; its size.
std::size_t FolderWatch::take(std::string_view bytes, FolderChanges& changes)
{
    inotify_event event{};
    std::memcpy(&event, bytes.data(), sizeof event);
    // Padded with NUL.
    const std::string_view padded = bytes.substr(sizeof event, event.len);
    const std::string name(padded.substr(0, padded.find('\0')));
    const bool lost = (event.mask & IN_Q_OVERFLOW) != 0;
    changes.everything = changes.everything || lost || isTurn(event.wd, name);
    takeMissing(event.wd, name, changes);
    if (const auto found = watched.find(event.wd); found != watched.end()) {
        for (const std::string& folder : found->second) {
            takeFolder(folder, event.mask, name, changes);
        }
    }
    if ((event.mask & IN_MOVE_SELF) != 0) {
        ::inotify_rm_watch(notifications.get(), event.wd);
    }
    if ((event.mask & (IN_IGNORED | IN_MOVE_SELF)) != 0) {
        watched.erase(event.wd);
        links.erase(event.wd);
    }
    return sizeof event + event.len;
}

bool FolderWatch::isTurn(int number, const std::string& name) const
{
    const auto found = links.find(number);
    return found != links.end() && found->second.contains(name);
}

/// What has come, and what now has to be waited for elsewhere, is looked for when it is read again.
void FolderWatch::takeMissing(int number, const std::string& name, FolderChanges& changes)
{
    const auto found = standingForMissing.find(number);
    if (found == standingForMissing.end()) {
        return;
    }
    std::erase_if(found->second, [&](const auto& entry) {
        const bool concerned = name.empty() || name == entry.second;
        if (concerned) {
            changes.folders.insert(entry.first);
            changes.everything = true; // whatever came with it
        }
        return concerned;
    });
}

void FolderWatch::takeFolder(
    const std::string& folder, std::uint32_t mask, const std::string& name, FolderChanges& changes
)
{
    changes.folders.insert(folder);
    if (!name.empty()) {
        changes.names.insert(name);
    }
    if ((mask & IN_ISDIR) != 0 && !name.empty()) {
        changes.folders.insert(std::string(folder).append("/").append(name));
    }
}

} // namespace xdg
