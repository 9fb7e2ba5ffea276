// Takes pictures of what a person sees on a desktop, once it rests, and names them after the look
// that it has.
#pragma once

#include "desktop/Desktop.h"
#include "desktop/Rectangle.h"
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

class Camera
{
public:
    /// Pictures land in the folder. The others must outlive this.
    Camera(
        desktop::Desktop& desk,
        person::Person& user,
        desktop::StatusPanel& panel,
        std::filesystem::path pictures,
        Look look
    );

    /// Of the window with this title, with a little of the desktop around it.
    void takeWindow(const std::string& name, const std::string& title);
    /// Of the popover, its menu where that is open, and the panel.
    void takePopover(const std::string& name);
    /// Of the window that has the keyboard.
    void takeFocused(const std::string& name);
    /// Of the item, and of a part of the panel that it is in.
    void takeItem(const std::string& name);
    /// Of the area, with a little of the desktop around it.
    void take(const std::string& name, const desktop::Rectangle& area);

    /// With its frame.
    std::optional<desktop::Rectangle> placeOfWindow(const std::string& title);

private:
    desktop::Rectangle placeWithFrame(xcb_window_t window);
    void save(const std::string& name, const desktop::Rectangle& area);

    desktop::Desktop& desk;
    person::Person& user;
    desktop::StatusPanel& panel;
    std::filesystem::path pictures;
    Look look;
};

} // namespace screenshots
