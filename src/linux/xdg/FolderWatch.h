// Tells that something changed in one of a set of folders, folders below them included. Everything,
// callback included, happens on the given thread.
#pragma once

#include "linux/proc/FileDescriptor.h"
#include "linux/proc/PollThread.h"

#include <functional>
#include <set>
#include <string>

namespace xdg {

class FolderWatch
{
public:
    explicit FolderWatch(proc::PollThread& thread) : thread(thread) {}

    std::function<void()> onChanged;

    /// Watches these from now on, and no others; one that is missing is noticed when it is made.
    /// False when some of them cannot be watched.
    bool setFolders(const std::set<std::string>& folders);

private:
    bool watchTree(const std::string& folder, int depth);
    bool watchNearest(std::string folder);
    void receive();

    proc::PollThread& thread;
    proc::FileDescriptor notifications;
};

} // namespace xdg
