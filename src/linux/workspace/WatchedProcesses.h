// The processes whose ends somebody waits for, and which of them are scripts, whose children do an
// application's work. Any thread.
#pragma once

#include <mutex>
#include <set>

#include <sys/types.h>

namespace workspace {

class WatchedProcesses
{
public:
    void add(pid_t pid, bool script)
    {
        const std::lock_guard lock(mutex);
        watched.insert(pid);
        if (script) {
            scripts.insert(pid);
        }
    }

    void remove(pid_t pid)
    {
        const std::lock_guard lock(mutex);
        watched.erase(pid);
        scripts.erase(pid);
    }

    [[nodiscard]] bool contains(pid_t pid) const
    {
        const std::lock_guard lock(mutex);
        return watched.contains(pid);
    }

    [[nodiscard]] bool isScript(pid_t pid) const
    {
        const std::lock_guard lock(mutex);
        return scripts.contains(pid);
    }

    /// Whether what the process executes can be of interest: it is watched, or may be the child of
    /// a script.
    [[nodiscard]] bool concerns(pid_t pid) const
    {
        const std::lock_guard lock(mutex);
        return !scripts.empty() || watched.contains(pid);
    }

private:
    mutable std::mutex mutex;
    std::set<pid_t> watched;
    std::set<pid_t> scripts; // of those
};

} // namespace workspace
