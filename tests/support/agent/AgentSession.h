// A private desktop with the agent that stands beside this program, or above it, on it. The agent,
// its helper and whatever they start end with the object.
#pragma once

#include "desktop/Desktop.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace agent {

using namespace std::chrono_literals;

inline constexpr auto PASSWORD = "open sesame";
inline constexpr std::chrono::milliseconds PATIENCE = 20s;

class AgentSession
{
public:
    AgentSession() : AgentSession(desktop::Desktop::Parts{}) {}

    explicit AgentSession(const desktop::Desktop::Parts& parts) : desk(parts) {}

    desktop::Desktop desk;

    /// What agents are started through: a program, and its arguments up to the agent's own path.
    std::vector<std::string> startedThrough;

    /// Keeps the password and the protected applications (identifiers) in the keyring, and turns
    /// off the protection of administrative applications, so that only the given ones are locked.
    void protect(const std::vector<std::string>& applications);

    /// Keeps one setting in the keyring, under a key such as "Password".
    void storeSetting(const std::string& key, const std::string& value);

    /// Starts the agent as the helper would: without showing anything.
    desktop::ChildProcess& startAgent(const std::vector<std::string>& arguments = {"-psn_0_1"});

    /// Starts it and waits until it watches applications; false when it does not come to that.
    bool startAndWait();

    desktop::ChildProcess& process() { return *running; }

    /// The agents that run in this session, those that the helper started included.
    [[nodiscard]] std::vector<pid_t> agents() const;
    [[nodiscard]] std::vector<pid_t> helpers() const;

    /// Standard output of all agents of the session, line by line.
    [[nodiscard]] std::vector<std::string> lines() const;
    [[nodiscard]] std::string errors() const;

    [[nodiscard]] std::size_t countOf(const std::string& line) const;
    bool waitForLine(const std::string& line, std::size_t times = 1) const;

    bool waitForCover();
    bool waitForEndOfCover();

    /// Types the password, and nothing else, into the lock and submits it.
    void enter(const std::string& password);

    /// All that a person who looks for the cause of a failure wants to see.
    std::string report();

    [[nodiscard]] static std::filesystem::path agentPath();
    [[nodiscard]] static std::filesystem::path helperPath();

private:
    [[nodiscard]] std::filesystem::path outputPath() const { return desk.folder() / "agent.out"; }

    [[nodiscard]] std::filesystem::path errorPath() const { return desk.folder() / "agent.err"; }

    std::optional<desktop::ChildProcess> running;
};

} // namespace agent
