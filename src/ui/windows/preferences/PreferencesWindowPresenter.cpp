#include "ui/windows/preferences/PreferencesWindowPresenter.h"

#include "platform/Call.h"

namespace ui {

using storage::ConfigurationAndPreferencesService;

PreferencesWindowPresenter::PreferencesWindowPresenter()
    : preferencesWindowController(std::make_unique<PreferencesWindowController>()),
      configurationAndPreferencesService(ConfigurationAndPreferencesService::sharedInstance())
{
}

void PreferencesWindowPresenter::present()
{
    preferencesWindowController->onCancel = [this] {
        preferencesWindowController->closeServiceWindow();
    };
    preferencesWindowController->onPasswordEntered =
        [this](const std::string& password, const std::string& confirmation) {
            confirm(password, confirmation);
        };
    preferencesWindowController->showServiceWindow();
}

void PreferencesWindowPresenter::focus()
{
    preferencesWindowController->focus();
}

void PreferencesWindowPresenter::stopService()
{
    preferencesWindowController->closeServiceWindow();
}

void PreferencesWindowPresenter::showErrorMessage(const std::string& text)
{
    preferencesWindowController->showErrorMessage(text);
}

void PreferencesWindowPresenter::confirm(
    const std::string& password, const std::string& confirmation
)
{
    const storage::PasswordValidation validation =
        ConfigurationAndPreferencesService::validateNewPassword(password, confirmation);
    if (!validation.accepted) {
        showErrorMessage(validation.message);
        return;
    }
    configurationAndPreferencesService.setApplicationPassword(password);
    preferencesWindowController->closeServiceWindow();
    platform::call(onConfirmNewPassword);
}

} // namespace ui
