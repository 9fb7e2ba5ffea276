#include "ui/hub/PresetersMainHub.h"

namespace ui {

PresetersMainHub::PresetersMainHub()
    : popoverInterfacePresenter(std::make_unique<PopoverInterfacePresenter>()),
      configurationAndPreferencesService(
          storage::ConfigurationAndPreferencesService::sharedInstance()
      )
{
}

void PresetersMainHub::present()
{
    popoverInterfacePresenter->onAddApplicationsRequest = [this] { showSelection(); };
    popoverInterfacePresenter->onChangePreferencesRequest = [this] { showPreferences(); };
    popoverInterfacePresenter->onHelpRequest = [this] { showHelp(); };
    if (!configurationAndPreferencesService.hasPassword()) {
        presentGreeting();
    }
    popoverInterfacePresenter->startService();
}

void PresetersMainHub::presentGreeting()
{
    greetingsWindowPresenter = std::make_unique<GreetingsWindowPresenter>();
    greetingsWindowPresenter->onSetupPasswordRequest = [this] { showPreferences(); };
    greetingsWindowPresenter->onHelpRequest = [this] { showHelp(); };
    greetingsWindowPresenter->present();
}

void PresetersMainHub::showPopover()
{
    popoverInterfacePresenter->popupSystem->showPopover();
}

void PresetersMainHub::hidePopover()
{
    popoverInterfacePresenter->popupSystem->hidePopover();
}

void PresetersMainHub::showPreferences()
{
    if (greetingsWindowPresenter != nullptr) {
        greetingsWindowPresenter->stopService();
    }
    hidePopover();
    if (preferencesWindowPresenter != nullptr) {
        preferencesWindowPresenter->focus();
        return;
    }
    preferencesWindowPresenter = std::make_unique<PreferencesWindowPresenter>();
    preferencesWindowPresenter->onConfirmNewPassword = [this] { showPopover(); };
    preferencesWindowPresenter->present();
}

void PresetersMainHub::showHelp()
{
    hidePopover();
    if (helpWindowPresenter != nullptr) {
        helpWindowPresenter->focus();
        return;
    }
    helpWindowPresenter = std::make_unique<HelpWindowPresenter>();
    helpWindowPresenter->present();
}

void PresetersMainHub::showSelection()
{
    hidePopover();
    if (selectApplicationsWindowPresenter != nullptr) {
        selectApplicationsWindowPresenter->focus();
        return;
    }
    selectApplicationsWindowPresenter = std::make_unique<SelectApplicationsWindowPresenter>();
    selectApplicationsWindowPresenter->startService();
}

} // namespace ui
