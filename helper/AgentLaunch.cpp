#include "helper/AgentLaunch.h"

#include "linux/descriptors/ErrorText.h"
#include "linux/process/Environment.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <spawn.h>
#include <unistd.h>

namespace helper {

namespace {

constexpr auto STARTED_BY_AGENT = "StartFromMaster";

bool concernsOwnStart(const std::string& entry)
{
    // The last two belong to one start and mislead a second program that shows them.
    constexpr std::array<std::string_view, 3> NAMES = {
        STARTED_BY_AGENT, "DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"};
    return std::find(NAMES.begin(), NAMES.end(), process::environmentName(entry)) != NAMES.end();
}

// A session of its own keeps it apart from a terminal that the helper may have been started from;
// signals are as a program expects to find them.
void setManner(posix_spawnattr_t& manner)
{
    sigset_t none = {};
    sigset_t all = {};
    sigemptyset(&none);
    sigfillset(&all);
    ::posix_spawnattr_init(&manner);
    ::posix_spawnattr_setsigmask(&manner, &none);
    ::posix_spawnattr_setsigdefault(&manner, &all);
    ::posix_spawnattr_setflags(
        &manner, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF
    );
}

} // namespace

std::string agentPath(const std::string& helperPath)
{
    return std::filesystem::path(helperPath + "/../../../../../Tarvel").lexically_normal();
}

std::vector<std::string> agentArguments(const std::string& path, pid_t helperProcess)
{
    return {path, "-psn_0_" + std::to_string(helperProcess)};
}

std::vector<std::string> agentEnvironment(const std::vector<std::string>& environment)
{
    std::vector<std::string> entries;
    for (const std::string& entry : environment) {
        if (!concernsOwnStart(entry)) {
            entries.push_back(entry);
        }
    }
    return entries;
}

bool isStartedByAgent()
{
    return process::environmentValue(STARTED_BY_AGENT) == "1";
}

std::optional<pid_t> startAgent(std::string& problem)
{
    std::error_code error;
    const std::string own = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::string path = agentPath(own);
    std::vector<std::string> arguments = agentArguments(path, ::getpid());
    std::vector<std::string> environment = agentEnvironment(process::environmentEntries());
    posix_spawnattr_t manner = {};
    setManner(manner);
    pid_t process = 0;
    const int result = ::posix_spawn(
        &process,
        path.c_str(),
        nullptr,
        &manner,
        process::pointersTo(arguments).data(),
        process::pointersTo(environment).data()
    );
    ::posix_spawnattr_destroy(&manner);
    if (result != 0) {
        problem = path + ": " + descriptors::errorText(result);
        return std::nullopt;
    }
    return process;
}

} // namespace helper
