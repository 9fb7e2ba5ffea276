// Goes through every screen of the agent on a desktop of its own and takes a picture of each.
#pragma once

#include "agent/AgentSession.h"
#include "desktop/BusConnection.h"
#include "desktop/StatusPanel.h"
#include "person/Person.h"

#include <filesystem>
#include <optional>
#include <string>

namespace screenshots {

struct Look
{
    bool dark = false; // panel and desktop
    int scale = 1;
};

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

    /// Of the window with this title, with a little of the desktop around it.
    void takeWindow(const std::string& name, const std::string& title);
    /// Of the popover, its menu where that is open, and the panel.
    void takePopover(const std::string& name);
    /// Of the window that has the keyboard.
    void takeFocused(const std::string& name);
    /// Of the item, and of a part of the panel that it is in.
    void takeItem(const std::string& name);
    void take(const std::string& name, const desktop::Rectangle& area);
    void save(const std::string& name, const desktop::Rectangle& area);
    void clickTitleOf(const std::string& window);
    std::optional<desktop::Rectangle> placeOfWindow(const std::string& title);
    desktop::Rectangle placeWithFrame(xcb_window_t window);

    std::filesystem::path pictures;
    Look look;
    agent::AgentSession session;
    desktop::BusConnection portal;
    person::Person user;
    std::optional<desktop::StatusPanel> panel;
};

} // namespace screenshots
