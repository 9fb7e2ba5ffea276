// Finds execs by looking at /proc and comparing with what was there before. A program that ends
// between two looks is missed, and a fork is no exec. All of it happens on the calling thread.
#pragma once

#include "linux/proc/ProcFilesystem.h"

#include <functional>
#include <map>

namespace proc {

class ProcessScan
{
public:
    explicit ProcessScan(const ProcFilesystem& processes);

    std::function<void(const ProcessFacts& facts)> onExec;

    /// Takes what runs now as known, and gives it.
    std::vector<ProcessFacts> prime();

    /// Reports each process that is new, or executes something else than at the last look.
    void look();

private:
    struct Known
    {
        std::uint64_t startTime = 0;
        std::string executable;
        std::vector<std::string> arguments;
        bool isFork = false;
    };

    using AllKnown = std::map<pid_t, Known>;

    void keepClosed(AllKnown& before);
    void meet(pid_t pid);
    void meetFork(pid_t pid, const AllKnown& before);
    [[nodiscard]] bool unchanged(pid_t pid, const ProcessStatus& status, const Known& known) const;

    const ProcFilesystem& processes;
    AllKnown known;
};

} // namespace proc
