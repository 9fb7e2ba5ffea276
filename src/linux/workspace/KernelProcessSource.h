// The processes of this user, as the kernel tells of them. Started and ended by the main thread;
// tells on one of its own.
#pragma once

#include "linux/proc/ProcFilesystem.h"
#include "linux/proc/ProcessEvents.h"
#include "linux/workspace/ProcessSource.h"
#include "platform/Report.h"

namespace workspace {

class KernelProcessSource final : public ProcessSource
{
public:
    explicit KernelProcessSource(platform::Report report);

    void start() override;
    void watchExit(pid_t pid, std::uint64_t startTime) override;
    void watchExecutables(std::set<std::string> paths) override;
    std::vector<pid_t> ancestorsOf(pid_t pid) const override;
    std::optional<proc::ProcessFacts> factsOf(pid_t pid) const override;
    proc::ProcessEnvironment environmentOf(pid_t pid) const override;
    bool isStartedByBus(const proc::ProcessFacts& facts) const override;
    bool alive(pid_t pid, std::uint64_t startTime) const override;
    std::vector<proc::ProcessFacts> executing(const std::string& executable) const override;

private:
    proc::ProcFilesystem processes;
    proc::ProcessEvents events;
};

} // namespace workspace
