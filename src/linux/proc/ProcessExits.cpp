#include "linux/proc/ProcessExits.h"

#include "platform/Call.h"

#include <utility>

namespace proc {

namespace {

constexpr std::chrono::milliseconds LOOK_INTERVAL{100};

} // namespace

ProcessExits::ProcessExits(
    PollThread& thread, const ProcFilesystem& processes, OpenProcess openProcess
)
    : thread(thread),
      processes(processes),
      openProcess(openProcess)
{
}

void ProcessExits::watch(pid_t pid, std::uint64_t startTime)
{
    const auto known = watched.find(pid);
    if (known != watched.end()) {
        if (known->second.startTime == startTime) {
            return;
        }
        ended(pid);
    }
    descriptors::FileDescriptor process = openProcess(pid);
    // The number may have been given to another process before it was opened.
    if (!processes.alive(pid, startTime)) {
        platform::call(onExit, pid, startTime);
        return;
    }
    const int descriptor = process.get();
    watched[pid] = {std::move(process), startTime};
    if (descriptor >= 0) {
        thread.watch(descriptor, [this, pid] { ended(pid); });
    } else {
        look(pid, startTime);
    }
}

void ProcessExits::ended(pid_t pid)
{
    auto entry = watched.extract(pid);
    if (entry.empty()) {
        return;
    }
    if (entry.mapped().process.isOpen()) {
        thread.unwatch(entry.mapped().process.get());
    }
    platform::call(onExit, pid, entry.mapped().startTime);
}

/// For want of descriptors: looks from time to time.
void ProcessExits::look(pid_t pid, std::uint64_t startTime)
{
    const auto known = watched.find(pid);
    if (known == watched.end() || known->second.startTime != startTime) {
        return; // reported already, and the number may be another process's by now
    }
    if (!processes.alive(pid, startTime)) {
        ended(pid);
        return;
    }
    thread.postAfter(LOOK_INTERVAL, [this, pid, startTime] { look(pid, startTime); });
}

} // namespace proc
