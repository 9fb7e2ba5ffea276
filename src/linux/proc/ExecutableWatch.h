// Hears when one of the given files is executed, where the process connector is refused. It cannot
// tell by which process. A file that is replaced or appears later is watched again from then on,
// with its folder or without. All of it, callbacks included, happens on the given thread.
#pragma once

#include "linux/descriptors/FileDescriptor.h"
#include "linux/proc/PollThread.h"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>

namespace proc {

class ExecutableWatch
{
public:
    /// `open` gives the descriptor of a notification group, or -1.
    ExecutableWatch(PollThread& thread, std::function<int()> open = openGroup);

    std::function<void()> onExecuted;

    /// False when the kernel refuses.
    bool start();

    /// Files that are not in the set any more are forgotten.
    void setExecutables(const std::set<std::string>& paths);

    static int openGroup();

private:
    void mark(const std::string& path);
    void unmark(const std::string& path);
    bool watchFolder(const std::string& folder);
    bool watchFolderThatIsThere(const std::string& folder);
    void watchBelow(const std::string& folder);
    void loseFolder(int watch);
    void receiveExecutions();
    void receiveReplacements();
    void receiveChange(int watch, std::uint32_t mask, const std::string& name);

    PollThread& thread;
    std::function<int()> open;
    descriptors::FileDescriptor group;
    descriptors::FileDescriptor folders;
    std::set<std::string> executables;
    std::map<int, std::string> folderOfWatch;
    std::set<std::string> watchedFolders;
};

} // namespace proc
