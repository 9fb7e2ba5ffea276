// The instances that run, in order of appearance, and which of them a process, an application or a
// window is of; where several fit, the latest. Empty answers where none does. Main thread.
#pragma once

#include "linux/workspace/Instance.h"

#include <functional>
#include <string>
#include <vector>

namespace workspace {

class InstanceList
{
public:
    void add(const InstancePtr& instance) { list.push_back(instance); }

    void remove(const InstancePtr& instance) { std::erase(list, instance); }

    const std::vector<InstancePtr>& all() const { return list; }

    InstancePtr latestThat(const std::function<bool(const Instance& instance)>& matches) const;

    /// That of the application.
    InstancePtr latestOf(const std::string& identifier) const;

    /// That which the process is known to be a part of.
    InstancePtr ofProcess(pid_t pid) const;

    /// The same, or else that of the nearest ancestor which is part of one.
    InstancePtr ofProcess(pid_t pid, const std::vector<pid_t>& ancestors) const;

    /// That which the process is a part of as this application.
    InstancePtr ofProcessAs(const std::string& identifier, pid_t pid) const;

    /// That of an application whose windows are all that is known of it.
    InstancePtr withoutProcess(const std::string& identifier) const;

    /// That of an application with this leading process, which is 0 for one without.
    InstancePtr ledBy(pid_t pid, const std::string& identifier) const;

    /// That which shows this window.
    InstancePtr showing(std::uint64_t window) const;

private:
    std::vector<InstancePtr> list;
};

} // namespace workspace
