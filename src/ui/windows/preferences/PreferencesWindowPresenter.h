// Owns the password window, validates what was typed in it and stores an accepted password. Main
// thread only.
#pragma once

#include "storage/ConfigurationAndPreferencesService.h"
#include "ui/windows/preferences/PreferencesWindowController.h"

namespace ui {

class PreferencesWindowPresenter
{
public:
    PreferencesWindowPresenter();

    void present();
    void focus();
    void stopService();

    /// An alert on the password window.
    void showErrorMessage(const std::string& text);

    const std::unique_ptr<PreferencesWindowController> preferencesWindowController;
    storage::ConfigurationAndPreferencesService& configurationAndPreferencesService;

    /// A new password has been stored.
    std::function<void()> onConfirmNewPassword;

private:
    void confirm(const std::string& password, const std::string& confirmation);
};

} // namespace ui
