// Answers the workspace's questions from the catalogue. Any thread may call.
#pragma once

#include "linux/proc/ProcFilesystem.h"
#include "linux/workspace/ApplicationIndex.h"
#include "linux/xdg/ApplicationCatalogue.h"

namespace xdg {

class XdgApplicationIndex final : public workspace::ApplicationIndex
{
public:
    /// `catalogue` must outlive this. `processes` is asked what launchers claim.
    explicit XdgApplicationIndex(
        const ApplicationCatalogue& catalogue,
        proc::ProcFilesystem processes = proc::ProcFilesystem()
    )
        : catalogue(catalogue),
          processes(std::move(processes))
    {
    }

    workspace::KnownApplicationPtr ofProcess(const proc::ProcessFacts& facts) const override;
    workspace::KnownApplicationPtr ofWindow(const workspace::WindowFacts& facts) const override;
    workspace::KnownApplicationPtr withIdentifier(const std::string& identifier) const override;
    bool plays(const std::string& identifier, const std::string& role) const override;
    std::set<std::string> executables() const override;

private:
    const ApplicationCatalogue& catalogue;
    proc::ProcFilesystem processes;
};

} // namespace xdg
