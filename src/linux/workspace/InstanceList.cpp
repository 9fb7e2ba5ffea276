#include "linux/workspace/InstanceList.h"

#include <algorithm>

namespace workspace {

InstancePtr InstanceList::latestThat(const std::function<bool(const Instance& instance)>& matches
) const
{
    const auto found = std::find_if(list.rbegin(), list.rend(), [&](const InstancePtr& instance) {
        return matches(*instance);
    });
    return found == list.rend() ? nullptr : *found;
}

InstancePtr InstanceList::latestOf(const std::string& identifier) const
{
    return latestThat([&](const Instance& instance) {
        return instance.application->identifier == identifier;
    });
}

InstancePtr InstanceList::ofProcess(pid_t pid) const
{
    return latestThat([&](const Instance& instance) { return instance.processes.contains(pid); });
}

InstancePtr InstanceList::ofProcess(pid_t pid, const std::vector<pid_t>& ancestors) const
{
    InstancePtr instance = ofProcess(pid);
    for (auto ancestor = ancestors.begin(); instance == nullptr && ancestor != ancestors.end();
         ++ancestor) {
        instance = ofProcess(*ancestor);
    }
    return instance;
}

InstancePtr InstanceList::ofProcessAs(const std::string& identifier, pid_t pid) const
{
    return latestThat([&](const Instance& instance) {
        return instance.processes.contains(pid) && instance.application->identifier == identifier;
    });
}

InstancePtr InstanceList::withoutProcess(const std::string& identifier) const
{
    return latestThat([&](const Instance& instance) {
        return instance.processes.empty() && instance.application->identifier == identifier;
    });
}

InstancePtr InstanceList::ledBy(pid_t pid, const std::string& identifier) const
{
    return latestThat([&](const Instance& instance) {
        return instance.leader.pid == pid && instance.application->identifier == identifier;
    });
}

InstancePtr InstanceList::showing(std::uint64_t window) const
{
    return latestThat([&](const Instance& instance) { return instance.windows.contains(window); });
}

} // namespace workspace
