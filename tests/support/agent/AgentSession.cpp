#include "agent/AgentSession.h"

#include "agent/Cover.h"
#include "desktop/Failure.h"
#include "desktop/SessionProcesses.h"
#include "desktop/Wait.h"

#include <algorithm>
#include <sstream>

namespace agent {

namespace {

/// The bundle of the build tree that this program belongs to: beside it or above.
std::filesystem::path bundle()
{
    std::filesystem::path folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    while (!std::filesystem::exists(folder / "Tarvel.app")) {
        if (folder == folder.root_path()) {
            throw desktop::Failure("there is no Tarvel.app beside this program");
        }
        folder = folder.parent_path();
    }
    return folder / "Tarvel.app";
}

} // namespace

std::filesystem::path AgentSession::agentPath()
{
    return bundle() / "Tarvel";
}

std::filesystem::path AgentSession::helperPath()
{
    return bundle() / "Contents/Library/LoginItems/OlvoHelper.app/OlvoHelper";
}

void AgentSession::protect(const std::vector<std::string>& applications)
{
    std::string list;
    for (const std::string& application : applications) {
        list.append(application).append(";");
    }
    storeSetting("Password", PASSWORD);
    storeSetting("Applications", list);
    storeSetting("Administrative", "0");
}

void AgentSession::storeSetting(const std::string& key, const std::string& value)
{
    desk.keyring().items().store("com.quorvent.Tarvel (" + key + ")", value);
}

desktop::ChildProcess& AgentSession::startAgent(const std::vector<std::string>& arguments)
{
    std::vector<std::string> command = startedThrough;
    command.push_back(agentPath());
    command.insert(command.end(), arguments.begin(), arguments.end());
    running.emplace(desktop::ChildProcess::Command{
        .arguments = command,
        .environment = desk.environment,
        .output = outputPath(),
        .error = errorPath(),
    });
    return *running;
}

bool AgentSession::startAndWait()
{
    startAgent();
    return waitForLine("Monitoring services started");
}

std::vector<pid_t> AgentSession::agents() const
{
    return desktop::processesOf(desk.folder(), agentPath());
}

std::vector<pid_t> AgentSession::helpers() const
{
    return desktop::processesOf(desk.folder(), helperPath());
}

std::vector<std::string> AgentSession::lines() const
{
    std::istringstream text(desktop::readFile(outputPath()));
    std::vector<std::string> found;
    for (std::string line; std::getline(text, line);) {
        found.push_back(line);
    }
    return found;
}

std::string AgentSession::errors() const
{
    return desktop::readFile(errorPath());
}

std::size_t AgentSession::countOf(const std::string& line) const
{
    const std::vector<std::string> all = lines();
    return static_cast<std::size_t>(std::count(all.begin(), all.end(), line));
}

bool AgentSession::waitForLine(const std::string& line, std::size_t times) const
{
    return desktop::waitUntil([&] { return countOf(line) >= times; }, PATIENCE);
}

bool AgentSession::waitForCover()
{
    return desktop::waitUntil([this] { return isCovered(desk) && showsControls(desk); }, PATIENCE);
}

bool AgentSession::waitForEndOfCover()
{
    return desktop::waitUntil([this] { return isUncovered(desk); }, PATIENCE);
}

void AgentSession::enter(const std::string& password)
{
    desk.input().press('a', {desktop::KEY_CONTROL});
    desk.input().press(desktop::KEY_BACKSPACE);
    desk.input().type(password);
    desk.input().press(desktop::KEY_RETURN);
}

std::string AgentSession::report()
{
    return describe(desk) + "standard output:\n" + desktop::readFile(outputPath()) +
           "standard error:\n" + errors();
}

} // namespace agent
