// The main job, done as a person would do it, on a desktop of its own: what is protected is stored,
// a real application is started, covered, unlocked, and covered again after the agent was killed.
#pragma once

#include "agent/AgentSession.h"
#include "agent/Recorder.h"
#include "tour/Steps.h"

#include <chrono>
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

private:
    std::string openDesktop();
    std::string storeSettings();
    std::string startAgent();
    std::string startApplication();
    std::string enterWrongPassword();
    std::string enterRightPassword();
    std::string typeIntoApplication();
    std::string endApplication();
    std::string lockAgain();
    std::string killAgent();
    std::string unlockAgain();

    void require(bool held, const std::string& otherwise);
    void takePicture(const std::string& name);
    bool applicationHasFocus();

    std::filesystem::path pictures;
    Steps steps;
    std::unique_ptr<agent::AgentSession> session;
    std::unique_ptr<agent::Recorder> application;
};

} // namespace tour
