#include "HelperFixture.h"

#include "desktop/Wait.h"

#include <csignal>
#include <fstream>
#include <sstream>

#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

HelperFixture::HelperFixture()
    : environment({{"PATH", "/usr/bin:/bin"}, {"XDG_RUNTIME_DIR", folder.path()}})
{
    fs::create_directories(helperPath().parent_path());
    fs::copy_file(FAKE_AGENT, agentPath());
    fs::copy_file(OLVO_HELPER, helperPath());
}

HelperFixture::~HelperFixture()
{
    helper.reset();
    agent.reset();
    EXPECT_EQ(errors().find("Sanitizer"), std::string::npos) << errors();
    // Agents that a helper started outlive it.
    for (const AgentStart& start : starts()) {
        std::error_code error;
        const std::string program = "/proc/" + std::to_string(start.process) + "/exe";
        if (fs::read_symlink(program, error) == agentPath()) {
            ::kill(start.process, SIGKILL);
        }
    }
}

void HelperFixture::startBus()
{
    bus.reset();
    bus = std::make_unique<desktop::PrivateBus>(folder.subfolder("bus"), environment);
    environment["DBUS_SESSION_BUS_ADDRESS"] = bus->address();
}

HelperFixture::Child HelperFixture::startHelperFromAgent() const
{
    desktop::Environment variables = environment;
    variables["StartFromMaster"] = "1";
    return startProgram(helperPath(), variables);
}

std::vector<AgentStart> HelperFixture::starts() const
{
    std::vector<AgentStart> list;
    std::ifstream log(folder.path() / "agents.log");
    std::string line;
    while (std::getline(log, line)) {
        std::istringstream words(line);
        AgentStart start;
        words >> start.process >> start.argument >> start.startFromMaster;
        list.push_back(start);
    }
    return list;
}

std::vector<AgentStart> HelperFixture::waitForStarts(std::size_t number) const
{
    desktop::waitUntil([&] { return starts().size() >= number; }, PATIENCE);
    std::vector<AgentStart> list = starts();
    EXPECT_EQ(list.size(), number) << errors();
    list.resize(number);
    return list;
}

void HelperFixture::startPair()
{
    agent = startAgentByHand();
    waitForStarts(1);
    helper = startHelperFromAgent();
    waitUntilHelperWatches();
}

// It watches when it holds the process descriptor of an agent, and hears the bus from before that.
void HelperFixture::waitUntilHelperWatches() const
{
    EXPECT_TRUE(desktop::waitUntil([&] { return helperHolds("anon_inode:[pidfd]") > 0; }, PATIENCE))
        << errors();
}

void HelperFixture::stopHelper() const
{
    helper->signal(SIGSTOP);
    const std::string facts = "/proc/" + std::to_string(helper->id()) + "/stat";
    EXPECT_TRUE(desktop::waitUntil(
        [&] { return desktop::readFile(facts).find(") T ") != std::string::npos; }, PATIENCE
    ));
}

int HelperFixture::helperHolds(const std::string& kind) const
{
    int number = 0;
    std::error_code error;
    const fs::path descriptors = "/proc/" + std::to_string(helper->id()) + "/fd";
    for (const auto& entry : fs::directory_iterator(descriptors, error)) {
        const std::string target = fs::read_symlink(entry.path(), error);
        number += target.starts_with(kind) ? 1 : 0;
    }
    return number;
}

bool HelperFixture::endsWithZero(const Child& helper)
{
    return helper->waitForExitStatus(PATIENCE) == 0;
}

void HelperFixture::setManner(const std::string& manner) const
{
    desktop::writeFile(folder.path() / "manner", manner);
}

std::string HelperFixture::errors() const
{
    return desktop::readFile(folder.path() / "errors.log");
}

fs::path HelperFixture::helperPath() const
{
    return bundle() / "Contents/Library/LoginItems/OlvoHelper.app/OlvoHelper";
}

HelperFixture::Child
HelperFixture::startProgram(const fs::path& program, const desktop::Environment& variables) const
{
    desktop::ChildProcess::Command command;
    command.arguments = {program};
    command.environment = variables;
    command.output = folder.path() / "output.log";
    command.error = folder.path() / "errors.log";
    return std::make_unique<desktop::ChildProcess>(command);
}
