#include "desktop/SessionProcesses.h"

#include "desktop/TemporaryFolder.h"
#include "desktop/Wait.h"

#include <algorithm>
#include <charconv>
#include <csignal>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>

#include <sys/prctl.h>
#include <unistd.h>

namespace desktop {

namespace fs = std::filesystem;

namespace {

std::optional<pid_t> processOf(const fs::directory_entry& entry)
{
    const std::string name = entry.path().filename().string();
    pid_t process = 0;
    const auto read = std::from_chars(name.data(), name.data() + name.size(), process);
    const bool isNumber = read.ec == std::errc() && read.ptr == name.data() + name.size();
    return isNumber ? std::optional(process) : std::nullopt;
}

bool livesIn(const fs::path& process, const std::string& folder)
{
    const std::string environment = readFile(process / "environ");
    return environment.find("=" + folder + "/") != std::string::npos;
}

/// Of those that have not ended.
std::map<pid_t, pid_t> parentsOfAll()
{
    std::map<pid_t, pid_t> parents;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
        const auto process = processOf(entry);
        const std::string status = process ? readFile(entry.path() / "stat") : std::string();
        // After the name: the state, then the parent.
        const std::size_t name = status.rfind(')');
        std::istringstream rest(name == std::string::npos ? "" : status.substr(name + 1));
        char state = 'Z';
        pid_t parent = 0;
        if (rest >> state >> parent && state != 'Z') {
            parents[*process] = parent;
        }
    }
    return parents;
}

} // namespace

std::vector<pid_t> processesOf(const fs::path& folder)
{
    std::vector<pid_t> found;
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc")) {
        const auto process = processOf(entry);
        if (process.has_value() && *process != getpid() && livesIn(entry.path(), folder.string())) {
            found.push_back(*process);
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

std::vector<pid_t> processesOf(const fs::path& folder, const fs::path& executable)
{
    std::vector<pid_t> found = processesOf(folder);
    std::erase_if(found, [&executable](pid_t process) {
        std::error_code error;
        return fs::read_symlink("/proc/" + std::to_string(process) + "/exe", error) != executable;
    });
    return found;
}

void adoptOrphans()
{
    prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0);
}

std::vector<pid_t> descendants()
{
    const std::map<pid_t, pid_t> parents = parentsOfAll();
    std::vector<pid_t> found;
    for (const auto& [process, parent] : parents) {
        pid_t ancestor = parent;
        while (ancestor != getpid() && parents.contains(ancestor)) {
            ancestor = parents.at(ancestor);
        }
        if (ancestor == getpid()) {
            found.push_back(process);
        }
    }
    return found;
}

void endProcessesOf(const fs::path& folder)
{
    waitUntil(
        [&folder] {
            const std::vector<pid_t> left = processesOf(folder);
            for (const pid_t process : left) {
                kill(process, SIGKILL);
            }
            return left.empty();
        },
        std::chrono::seconds(10)
    );
}

} // namespace desktop
