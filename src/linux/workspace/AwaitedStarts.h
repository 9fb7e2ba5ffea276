// The starts that were announced and whose first window is still to come. Main thread.
#pragma once

#include "linux/workspace/InstanceList.h"
#include "linux/workspace/Questions.h"

#include <string>

namespace workspace {

class AwaitedStarts
{
public:
    /// A start whose first window comes later than that was forgotten meanwhile.
    static constexpr std::chrono::seconds LONGEST_START{60};

    /// Both must outlive this.
    AwaitedStarts(const InstanceList& list, const Questions& ask) : list(list), ask(ask) {}

    [[nodiscard]] bool contain(const Instance& instance) const
    {
        return instance.awaited && ask.now() - *instance.awaited <= LONGEST_START;
    }

    /// The latest one of the application; empty when there is none.
    [[nodiscard]] InstancePtr latestOf(const std::string& identifier) const
    {
        return list.latestThat([&](const Instance& instance) {
            return instance.application->identifier == identifier && contain(instance);
        });
    }

private:
    const InstanceList& list;
    const Questions& ask;
};

} // namespace workspace
