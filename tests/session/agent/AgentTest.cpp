#include "session/agent/AgentTest.h"

#include "desktop/Pixels.h"
#include "desktop/TemporaryFolder.h"

#include <iostream>

namespace agent {

void AgentTest::TearDown()
{
    if (HasFailure() && session) {
        std::cerr << session->report();
    }
}

void AgentTest::open(const desktop::Desktop::Parts& parts)
{
    session = std::make_unique<AgentSession>(parts);
}

void AgentTest::watch(const std::vector<std::string>& applications)
{
    open();
    watchHere(applications);
}

void AgentTest::watchHere(const std::vector<std::string>& applications)
{
    session->protect(applications);
    ASSERT_TRUE(session->startAndWait());
}

void AgentTest::addEntry(const std::string& identifier, const std::string& text) const
{
    const auto folder = session->desk.home() / ".local/share/applications";
    desktop::writeFile(folder / (identifier + ".desktop"), text);
}

std::vector<std::unique_ptr<Recorder>> AgentTest::startTerminals(int number) const
{
    std::vector<std::unique_ptr<Recorder>> terminals;
    for (int count = 0; count < number; ++count) {
        terminals.push_back(
            std::make_unique<Recorder>(session->desk, "terminal" + std::to_string(count))
        );
    }
    return terminals;
}

bool AgentTest::getsFocus(const desktop::ChildProcess& process) const
{
    return desktop::waitUntil(
        [&] { return session->desk.windows().activeProcess() == process.id(); }, PATIENCE
    );
}

bool AgentTest::coverStaysFor(std::chrono::milliseconds duration) const
{
    return desktop::holdsFor([this] { return isCovered(session->desk); }, duration);
}

bool AgentTest::locks() const
{
    return session->waitForCover() && session->waitForLine("Did start: XTerm");
}

bool AgentTest::opensWithThePassword() const
{
    session->enter(PASSWORD);
    return session->waitForEndOfCover();
}

} // namespace agent
