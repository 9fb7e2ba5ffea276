// The helper as it is built, in a copy of the bundle whose agent is `fake_agent`, in a session of
// its own without a display; with a bus once `startBus` is called.
#pragma once

#include "desktop/ChildProcess.h"
#include "desktop/PrivateBus.h"
#include "desktop/TemporaryFolder.h"
#include "processes/Environment.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

inline constexpr std::chrono::seconds PATIENCE(20);

/// How an agent was started, as it wrote it down itself.
struct AgentStart
{
    pid_t process = 0;
    std::string argument;
    std::string startFromMaster;
};

class HelperFixture : public testing::Test
{
public:
    ~HelperFixture() override;
    HelperFixture(const HelperFixture&) = delete;
    HelperFixture& operator=(const HelperFixture&) = delete;
    HelperFixture(HelperFixture&&) = delete;
    HelperFixture& operator=(HelperFixture&&) = delete;

protected:
    HelperFixture();

    using Child = std::unique_ptr<desktop::ChildProcess>;

    void startBus();

    Child startHelperAtLogin() const { return startProgram(helperPath(), environment); }

    Child startHelperFromAgent() const;

    Child startAgentByHand() const { return startProgram(agentPath(), environment); }

    /// Waits until agents have been started that often; the starts in their order.
    std::vector<AgentStart> waitForStarts(std::size_t number) const;
    std::vector<AgentStart> starts() const;

    /// An agent, watched by a helper that it started.
    void startPair();

    /// Waits until a helper has come so far that it would hear and see everything.
    void waitUntilHelperWatches() const;

    /// Returns when it has stopped.
    void stopHelper() const;

    /// How many descriptors of a kind, by the beginning of what they link to, it has open.
    int helperHolds(const std::string& kind) const;

    /// Whether the helper ends by itself, with status 0.
    static bool endsWithZero(const Child& helper);

    void setManner(const std::string& manner) const;
    std::string errors() const;

    std::filesystem::path bundle() const { return folder.path() / "Tarvel.app"; }

    std::filesystem::path agentPath() const { return bundle() / "Tarvel"; }

    std::filesystem::path helperPath() const;

    const desktop::TemporaryFolder folder;
    desktop::Environment environment;
    std::unique_ptr<desktop::PrivateBus> bus;
    Child agent;
    Child helper;

private:
    Child
    startProgram(const std::filesystem::path& program, const desktop::Environment& variables) const;
};
