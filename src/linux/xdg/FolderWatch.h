// Tells what changed in a set of folders. Everything, callback included, happens on the given
// thread.
#pragma once

#include "linux/descriptors/FileDescriptor.h"
#include "linux/proc/PollThread.h"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace xdg {

struct FolderChanges
{
    std::set<std::string> folders; // in which something changed, or that came or went
    std::set<std::string> names;   // of what changed in them
    bool everything = false;       // changes were lost

    void add(const FolderChanges& more);
};

class FolderWatch
{
public:
    explicit FolderWatch(proc::PollThread& thread) : thread(thread) {}

    std::function<void(const FolderChanges& changes)> onChanged;

    /// False when nothing can be watched.
    bool start();

    /// Watches the folder itself, not those below it; one that is missing is noticed when it is
    /// made. Where a link on its way is turned, everything has changed. Watching twice is watching
    /// once. False when it cannot be watched.
    bool watch(const std::string& folder);

    /// Notices when one of the links that the path leads through is turned: everything has changed
    /// then. False when that cannot be watched.
    bool watchLinks(const std::string& path);

private:
    bool watchNearest(const std::string& missing);
    [[nodiscard]] bool isTurn(int number, const std::string& name) const;
    void receive();
    std::size_t take(std::string_view bytes, FolderChanges& changes);
    void takeMissing(int number, const std::string& name, FolderChanges& changes);
    void takeFolder(
        const std::string& folder,
        std::uint32_t mask,
        const std::string& name,
        FolderChanges& changes
    );

    proc::PollThread& thread;
    descriptors::FileDescriptor notifications;
    std::map<int, std::set<std::string>> watched; // by the kernel's number
    /// The nearest folder that is there, by what is missing: the name to wait for in it.
    std::map<int, std::map<std::string, std::string>> standingForMissing;
    std::map<int, std::set<std::string>> links; // names, by the number of the folder they are in
};

} // namespace xdg
