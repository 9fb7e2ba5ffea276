#include "linux/workspace/BundleLauncher.h"

#include "linux/descriptors/ErrorText.h"
#include "linux/proc/ProcFilesystem.h"
#include "linux/process/Aside.h"
#include "linux/process/DescriptorLimit.h"
#include "linux/process/Environment.h"
#include "linux/process/SpawnSettings.h"
#include "platform/Call.h"

#include <filesystem>
#include <utility>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace workspace {

namespace {

constexpr int FIRST_OTHER_DESCRIPTOR = STDERR_FILENO + 1;

std::vector<std::string> environmentWith(const platform::LaunchConfiguration& added)
{
    std::vector<std::string> result = process::environmentEntries();
    std::erase_if(result, [&](const std::string& entry) {
        return added.contains(process::environmentName(entry));
    });
    for (const auto& [name, value] : added) {
        std::string entry = name;
        entry.append("=").append(value);
        result.push_back(std::move(entry));
    }
    return result;
}

} // namespace

BundleLauncher::BundleLauncher(platform::Report report, std::function<Clock::time_point()> now)
    : report(std::move(report)),
      now(std::move(now))
{
}

std::string BundleLauncher::executableOf(const std::string& bundlePath)
{
    const std::filesystem::path path(bundlePath);
    return (path / path.stem()).string();
}

BundleLauncher::Outcome
BundleLauncher::launch(const std::string& bundlePath, const platform::LaunchConfiguration& added)
{
    if (!mayStart(bundlePath)) {
        return Outcome::TooOften;
    }
    std::string executable = executableOf(bundlePath);
    std::vector<std::string> environment = environmentWith(added);
    const std::vector<char*> environmentPointers = process::pointersTo(environment);
    const std::vector<char*> arguments{executable.data(), nullptr};
    process::SpawnSettings settings;
    settings.closeFrom(FIRST_OTHER_DESCRIPTOR);
    pid_t child = 0;
    const int error = [&] {
        const process::UsualDescriptorLimit usual;
        return posix_spawn(
            &child,
            executable.c_str(),
            settings.actions(),
            settings.attributes(),
            arguments.data(),
            environmentPointers.data()
        );
    }();
    if (error != 0) {
        report(executable + " cannot be started: " + descriptors::errorText(error));
        return Outcome::Failed;
    }
    tellStarted(child, executable);
    // A child that nobody waits for stays in the process table.
    if (!process::runAside([child] { waitpid(child, nullptr, 0); })) {
        report("The end of " + executable + " cannot be waited for: there is no thread left");
    }
    return Outcome::Started;
}

void BundleLauncher::tellStarted(pid_t child, const std::string& executable) const
{
    const std::optional<proc::ProcessStatus> status = proc::ProcFilesystem().status(child);
    if (!status) {
        return;
    }
    proc::ProcessFacts facts;
    facts.pid = child;
    facts.parent = getpid();
    facts.startTime = status->startTime;
    facts.executable = executable;
    facts.arguments = {executable};
    platform::call(onStarted, facts);
}

bool BundleLauncher::mayStart(const std::string& bundlePath)
{
    std::vector<Clock::time_point>& recent = starts[bundlePath];
    const Clock::time_point limit = now() - std::chrono::minutes(1);
    std::erase_if(recent, [&](Clock::time_point start) { return start < limit; });
    if (recent.size() >= STARTS_A_MINUTE) {
        report(bundlePath + " was started too often; it is left alone for a while");
        return false;
    }
    recent.push_back(now());
    return true;
}

} // namespace workspace
