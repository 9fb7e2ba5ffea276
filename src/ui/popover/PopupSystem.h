// The program's item in the status area, and the one popover below it. Lives as long as the
// process. Main thread only.
#pragma once

#include "applications/SystemApplicationsService.h"
#include "applications/SystemConfigurationService.h"
#include "platform/Lifetime.h"
#include "platform/StatusBar.h"
#include "ui/popover/Popover.h"
#include "ui/views/ViewController.h"

#include <functional>
#include <memory>
#include <string>

namespace ui {

class PopupSystem
{
public:
    /// `image` and `imageWhite`: paths of the pictures for a light and for a dark status area.
    /// `viewController` must outlive this.
    PopupSystem(ViewController& viewController, std::string image, std::string imageWhite);

    /// The request to show the popover; it appears one turn of the main queue later.
    void showPopover();

    void hidePopover();

    /// The item was clicked.
    void mouseDown();

    /// What the item shows now.
    platform::StatusItemLook drawRect();

    ViewController& viewController;
    const std::string image;
    const std::string imageWhite;
    const std::unique_ptr<platform::StatusItem> statusBar;
    Popover popover;

    /// True while the popover is shown.
    bool active = false;

    /// Called at the start of every request to show the popover.
    std::function<void()> onWillShowPopover;

private:
    void present();

    /// Has an open popover go where the item is now.
    void follow();
    void later(void (PopupSystem::*step)());

    applications::SystemApplicationsService systemApplicationsService;
    applications::SystemConfigurationService systemConfigurationService;
    platform::Lifetime lifetime;
    bool absenceSaid = false;
};

} // namespace ui
