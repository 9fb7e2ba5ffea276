// Watches one agent until it ends: one that this process started, or whichever holds the agent's
// name in the session.
#pragma once

#include "helper/EventSource.h"
#include "linux/descriptors/FileDescriptor.h"
#include "linux/session/SessionWatch.h"

#include <functional>
#include <memory>
#include <optional>

#include <sys/types.h>

namespace helper {

class AgentWatch final : public EventSource
{
public:
    /// The agent has ended, with this exit status or, without one, killed or crashed. It is not
    /// watched any more, and its name is free.
    std::function<void(std::optional<int> status)> onEnded;

    /// Watches the agent that runs in this session; false when there is none.
    bool attach();

    /// Watches a child of this process, which is reaped at its end.
    void adopt(pid_t process);

    pollfd awaited() const override;
    void wake() override;

private:
    std::optional<int> takeStatus();

    std::unique_ptr<session::SessionWatch> other;
    pid_t child = 0;
    descriptors::FileDescriptor childEnd;
};

} // namespace helper
