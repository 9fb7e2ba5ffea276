// On kernels that keep the process connector to themselves, as they did before 6.6, starts are
// found by other means; what the user sees is the same.
#include "desktop/TemporaryFolder.h"
#include "session/agent/AgentTest.h"

#include <csignal>
#include <filesystem>
#include <optional>

namespace agent {

namespace {

std::string entryOf(const std::string& name, const std::string& program)
{
    return "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + program + "\n";
}

/// What a process does, as one letter: 'T' for one that is stopped.
char stateOf(const std::string& process)
{
    const std::string status = desktop::readFile("/proc/" + process + "/stat");
    const std::size_t name = status.rfind(") ");
    return name == std::string::npos ? '?' : status.at(name + 2);
}

} // namespace

class Fallback : public AgentTest
{
protected:
    Fallback()
    {
        open();
        session->startedThrough = {WITHOUT_CONNECTOR};
    }

    bool isInUse() const
    {
        return session->errors().find("the process connector is refused") != std::string::npos;
    }

    /// Starts the slow terminal, which is protected, and lifts its lock.
    desktop::ChildProcess openSlowTerminal() const
    {
        desktop::ChildProcess terminal = session->desk.start({SLOW_TERMINAL, tellTale()});
        EXPECT_TRUE(session->waitForCover() && opensWithThePassword());
        EXPECT_TRUE(desktop::waitUntil([this] { return told() == "ready"; }, PATIENCE));
        return terminal;
    }

    /// Lets it open a shell; the process, before it executes anything.
    std::string beginShell(desktop::ChildProcess& terminal) const
    {
        terminal.signal(SIGUSR1);
        EXPECT_TRUE(desktop::waitUntil([this] { return stateOf(told()) == 'T'; }, PATIENCE));
        return told();
    }

    /// Starts something else, and waits until the agent has seen that, and so all that was before.
    void letTheAgentLook()
    {
        const std::size_t seen = session->countOf("Will start: Marker");
        markers.push_back(session->desk.start({marker(), "60"}));
        EXPECT_TRUE(session->waitForLine("Will start: Marker", seen + 1));
    }

    std::string marker() const { return session->desk.home() / "marker"; }

private:
    std::string tellTale() const { return session->desk.home() / "shell"; }

    std::string told() const
    {
        const std::string text = desktop::readFile(tellTale());
        return text.substr(0, text.find('\n'));
    }

    std::vector<desktop::ChildProcess> markers;
};

TEST_F(Fallback, LocksAndOpens)
{
    watchHere({TERMINAL});
    Recorder xterm(session->desk);

    ASSERT_TRUE(locks());
    EXPECT_TRUE(isInUse()) << session->errors();
    session->enter("wrong");
    EXPECT_TRUE(coverStaysFor(500ms));
    EXPECT_TRUE(opensWithThePassword());
    EXPECT_TRUE(getsFocus(xterm.process()));
    EXPECT_EQ(session->countOf("Will start: XTerm"), 1U);
}

TEST_F(Fallback, TenStartsAtOnceAreHeldByOneLock)
{
    watchHere({TERMINAL});
    const auto terminals = startTerminals(10);

    ASSERT_TRUE(session->waitForCover());
    for (const auto& terminal : terminals) {
        ASSERT_TRUE(terminal->waitUntilItListens());
    }
    EXPECT_TRUE(coverStaysFor(500ms) && opensWithThePassword());
    // One that shows its window before it is found counts as one of the others.
    EXPECT_LE(session->countOf("Will start: XTerm"), 10U);
}

TEST_F(Fallback, AShellInAnOpenTerminalIsNoStart)
{
    std::filesystem::copy_file("/bin/sleep", marker());
    addEntry("marker", entryOf("Marker", marker()));
    addEntry("slow", entryOf("Slow", SLOW_TERMINAL));
    watchHere({"slow"});
    desktop::ChildProcess terminal = openSlowTerminal();

    const std::string shell = beginShell(terminal);
    letTheAgentLook();
    EXPECT_TRUE(isUncovered(session->desk));
    ::kill(std::stoi(shell), SIGCONT);
    letTheAgentLook();

    EXPECT_TRUE(isUncovered(session->desk));
    EXPECT_EQ(session->countOf("Will start: Slow"), 1U);
}

} // namespace agent
