// What Tarvel does, done as a person would do it, on a desktop of its own: a password is set, an
// application is picked, started, covered, unlocked, and covered again after the agent was killed.
#pragma once

#include "agent/Recorder.h"
#include "tour/Stage.h"
#include "tour/Steps.h"

#include <filesystem>
#include <memory>
#include <string>

namespace tour {

class Tour
{
public:
    /// Pictures land in this folder.
    explicit Tour(std::filesystem::path pictures) : pictures(std::move(pictures)) {}

    /// True when every step held.
    bool run();

    /// Leaves the desktop to somebody at a browser on this machine, the agent on it, until this
    /// process is asked to end. Only after a tour that held.
    void stay();

private:
    std::string openDesktop();
    std::string startApplication();
    std::string enterWrongPassword();
    std::string enterRightPassword();
    std::string typeIntoApplication();
    std::string endApplication();
    std::string lockAgain();
    std::string killAgent();
    std::string unlockAgain();

    void sayWhatThereIs();
    bool applicationHasFocus();
    bool applicationKeepsFocus();

    std::filesystem::path pictures;
    Steps steps;
    std::unique_ptr<Stage> stage;
    agent::AgentSession* session = nullptr; // the stage's
    std::unique_ptr<agent::Recorder> application;
};

} // namespace tour
