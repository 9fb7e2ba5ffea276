// Where the tour takes place: a desktop of its own with two screens, a panel and the agent, and
// somebody who uses them.
#pragma once

#include "agent/AgentSession.h"
#include "desktop/StatusPanel.h"
#include "person/Person.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>

namespace tour {

class Stage
{
public:
    /// Pictures land in this folder.
    explicit Stage(std::filesystem::path pictures);

    /// As soon as everything is drawn.
    void takePicture(const std::string& name);

    agent::AgentSession session;
    person::Person user;
    std::optional<desktop::StatusPanel> panel;

private:
    std::filesystem::path pictures;
};

/// Ends the step with these words where the condition does not hold.
void require(bool held, const std::string& otherwise);

std::string milliseconds(std::chrono::steady_clock::duration time);

} // namespace tour
