// Builds the status item and its popover, feeds the popover from the settings and carries its
// requests out; those that need another window go to the owner. Main thread only.
#pragma once

#include "platform/Lifetime.h"
#include "storage/ConfigurationAndPreferencesService.h"
#include "ui/popover/PopoverViewController.h"
#include "ui/popover/PopupSystem.h"

#include <functional>
#include <memory>
#include <string>

namespace ui {

class PopoverInterfacePresenter
{
public:
    PopoverInterfacePresenter();

    /// Puts the status item up. The three callbacks are handed on as they are now.
    void startService();
    void showService();
    void hideService();
    void stopService();

    const std::unique_ptr<PopoverViewController> popoverViewController;
    std::unique_ptr<PopupSystem> popupSystem;
    storage::ConfigurationAndPreferencesService& configurationAndPreferencesService;

    std::function<void()> onAddApplicationsRequest;
    std::function<void()> onChangePreferencesRequest;
    std::function<void()> onHelpRequest;

private:
    void wire();
    void askForNewPassword();
    void checkPassword(const std::string& typed);
    void removeApplication(const applications::ApplicationEntity& application);
    void switchActive(bool active);
    void switchLoginItem(bool enabled);

    platform::Lifetime lifetime;
};

} // namespace ui
