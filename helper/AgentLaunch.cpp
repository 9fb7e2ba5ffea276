#include "helper/AgentLaunch.h"

#include "linux/descriptors/ErrorText.h"
#include "linux/process/Environment.h"
#include "linux/process/SpawnSettings.h"

#include <algorithm>
#include <array>
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
    std::vector<std::string> entries = environment;
    std::erase_if(entries, concernsOwnStart);
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
    const process::SpawnSettings settings;
    pid_t process = 0;
    const int result = ::posix_spawn(
        &process,
        path.c_str(),
        settings.actions(),
        settings.attributes(),
        process::pointersTo(arguments).data(),
        process::pointersTo(environment).data()
    );
    if (result != 0) {
        problem = path + ": " + descriptors::errorText(result);
        return std::nullopt;
    }
    return process;
}

} // namespace helper
