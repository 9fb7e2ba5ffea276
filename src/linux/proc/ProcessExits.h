// Tells when chosen processes end. All of it, callbacks included, happens on the given thread.
#pragma once

#include "linux/descriptors/FileDescriptor.h"
#include "linux/descriptors/ProcessDescriptor.h"
#include "linux/proc/PollThread.h"
#include "linux/proc/ProcFilesystem.h"

#include <functional>
#include <map>

namespace proc {

class ProcessExits
{
public:
    using OpenProcess = descriptors::FileDescriptor (*)(pid_t process);

    ProcessExits(
        PollThread& thread,
        const ProcFilesystem& processes,
        OpenProcess openProcess = descriptors::openProcess
    );

    /// Once for each watched process, when its last thread has ended.
    std::function<void(pid_t pid, std::uint64_t startTime)> onExit;

    /// A process that is gone already is reported at once. Watching twice is watching once.
    void watch(pid_t pid, std::uint64_t startTime);

private:
    struct Watched
    {
        descriptors::FileDescriptor process;
        std::uint64_t startTime = 0;
    };

    void ended(pid_t pid);
    void look(pid_t pid, std::uint64_t startTime);

    PollThread& thread;
    const ProcFilesystem& processes;
    OpenProcess openProcess;
    std::map<pid_t, Watched> watched;
};

} // namespace proc
