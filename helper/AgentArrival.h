// Notices that an agent has taken its name in this session, whoever started it. One thread.
#pragma once

#include "helper/EventSource.h"
#include "linux/descriptors/FileDescriptor.h"

#include <functional>

namespace helper {

class AgentArrival final : public EventSource
{
public:
    /// Watches from now on. Where that is not possible nothing is ever reported.
    AgentArrival();

    /// Called once or more for each arrival, when the agent can be connected to.
    std::function<void()> onArrived;

    /// Whether agents that others start can be seen at all.
    bool isPossible() const { return changes.isOpen(); }

    pollfd awaited() const override { return {changes.get(), POLLIN, 0}; }

    void wake() override;

private:
    descriptors::FileDescriptor changes;
};

} // namespace helper
