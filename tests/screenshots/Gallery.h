// Goes through every screen of the agent on a desktop of its own and takes a picture of each.
#pragma once

#include "agent/AgentSession.h"
#include "desktop/FakeSettingsPortal.h"
#include "desktop/StatusPanel.h"
#include "person/Person.h"
#include "screenshots/Camera.h"

#include <filesystem>
#include <optional>
#include <string>

namespace screenshots {

class Gallery
{
public:
    /// Pictures land in this folder, named after screen and look.
    Gallery(std::filesystem::path pictures, Look look);

    void takeAll();

private:
    void offerApplications();
    void appearDark();
    void greet();
    void setPassword();
    void openContent();
    void pickApplications();
    void reopenContent();
    void failToStartAtLogin();
    void openMenu();
    void showHelp();
    void lock();
    void clickTitleOf(const std::string& window);

    Look look;
    agent::AgentSession session;
    std::optional<desktop::FakeSettingsPortal> portal; // where the look is dark
    person::Person user;
    std::optional<desktop::StatusPanel> panel;
    std::optional<Camera> camera;
};

} // namespace screenshots
