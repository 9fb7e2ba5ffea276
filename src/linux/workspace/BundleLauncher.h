// Starts the program of a bundle of this program's own layout. Main thread.
#pragma once

#include "linux/proc/ProcessFacts.h"
#include "platform/Report.h"
#include "platform/Workspace.h"

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace workspace {

class BundleLauncher
{
public:
    using Clock = std::chrono::steady_clock;

    enum class Outcome
    {
        Started,
        Failed,
        TooOften, // nothing was tried; a minute later it may be
    };

    /// A program that ends as soon as it is started must not keep the machine busy.
    static constexpr std::size_t STARTS_A_MINUTE = 10;

    explicit BundleLauncher(
        platform::Report report, std::function<Clock::time_point()> now = Clock::now
    );

    /// The started program, before anybody waits for it: one that ends at once may be gone by the
    /// time the kernel's own report of it is looked at.
    std::function<void(const proc::ProcessFacts& facts)> onStarted;

    /// The file that a bundle executes: "<bundle>/<name of the bundle without .app>".
    static std::string executableOf(const std::string& bundlePath);

    /// Starts it in a session of its own, with this program's environment and `added`, and without
    /// any open file of this program but the standard streams, and with the usual limit of them.
    Outcome launch(const std::string& bundlePath, const platform::LaunchConfiguration& added);

private:
    void tellStarted(pid_t child, const std::string& executable) const;
    bool mayStart(const std::string& bundlePath);

    platform::Report report;
    std::function<Clock::time_point()> now;
    std::map<std::string, std::vector<Clock::time_point>> starts;
};

} // namespace workspace
