// Watches one agent until it ends: one that this process started, or whichever holds the agent's
// name in the session. Where the system gives no descriptor for a child, `childMayHaveEnded` has to
// be called at each SIGCHLD. One thread.
#pragma once

#include "helper/EventSource.h"
#include "linux/descriptors/FileDescriptor.h"
#include "linux/descriptors/ProcessDescriptor.h"
#include "linux/session/SessionWatch.h"

#include <functional>
#include <memory>
#include <optional>

#include <sys/types.h>

namespace helper {

class AgentWatch final : public EventSource
{
public:
    using OpenProcess = descriptors::FileDescriptor (*)(pid_t process);

    explicit AgentWatch(OpenProcess openProcess = descriptors::openProcess)
        : openProcess(openProcess)
    {
    }

    /// The agent has ended, with this exit status or, without one, killed or crashed. It is not
    /// watched any more, and its name is free.
    std::function<void(std::optional<int> status)> onEnded;

    /// Watches the agent that runs in this session; false when there is none.
    bool attach();

    /// Watches a child of this process, which is reaped at its end.
    void adopt(pid_t process);

    void childMayHaveEnded();

    pollfd awaited() const override;
    void wake() override;

private:
    std::optional<int> takeStatus();

    OpenProcess openProcess;
    std::unique_ptr<session::SessionWatch> other;
    pid_t child = 0;
    descriptors::FileDescriptor childEnd;
};

} // namespace helper
