// Answers the workspace's questions from the catalogue. Any thread may call.
#pragma once

#include "linux/proc/ProcFilesystem.h"
#include "linux/workspace/ApplicationIndex.h"
#include "linux/xdg/ApplicationCatalogue.h"

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace xdg {

class XdgApplicationIndex final : public workspace::ApplicationIndex
{
public:
    /// `catalogue` must outlive this. `processes` is asked what launchers claim.
    explicit XdgApplicationIndex(
        ApplicationCatalogue& catalogue, proc::ProcFilesystem processes = proc::ProcFilesystem()
    )
        : catalogue(catalogue),
          processes(std::move(processes))
    {
    }

    workspace::KnownApplicationPtr ofProcess(const proc::ProcessFacts& facts) const override;
    workspace::KnownApplicationPtr ofWindow(const workspace::WindowFacts& facts) const override;
    workspace::KnownApplicationPtr ofCopy(const proc::ProcessFacts& facts) const override;
    workspace::KnownApplicationPtr withIdentifier(const std::string& identifier) const override;
    workspace::KnownApplicationPtr ofEntry(const std::string& entry) const override;
    bool plays(const std::string& identifier, const std::string& role) const override;
    std::set<std::string> executables() const override;
    bool mayBeApplication(const std::string& executable) const override;
    bool shareProgram(const std::string& identifier, const std::string& other) const override;
    bool mayHandOver(const std::string& identifier, const std::string& other) const override;
    void learn(const proc::ProcessFacts& facts, const std::string& identifier) override;

private:
    std::vector<std::string> claimsOf(pid_t pid) const;
    std::optional<std::string> learnedOf(const proc::ProcessFacts& facts) const;

    ApplicationCatalogue& catalogue;
    proc::ProcFilesystem processes;
    mutable std::mutex mutex;
    std::map<std::string, std::string> learned; // ids by file; guarded by the mutex
};

} // namespace xdg
