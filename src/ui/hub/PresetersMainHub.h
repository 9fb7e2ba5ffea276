// Owns every presenter of the interface and leads from one to the other. A presenter is made when
// it is first asked for, and kept from then on. Main thread only. Callbacks have it as `this`: none
// outlives the presenters that hold them, which are its own, and the delegate keeps it for the life
// of the process.
#pragma once

#include "app/InterfaceHub.h"
#include "storage/ConfigurationAndPreferencesService.h"
#include "ui/popover/PopoverInterfacePresenter.h"
#include "ui/windows/greetings/GreetingsWindowPresenter.h"
#include "ui/windows/help/HelpWindowPresenter.h"
#include "ui/windows/preferences/PreferencesWindowPresenter.h"
#include "ui/windows/selection/SelectApplicationsWindowPresenter.h"

#include <memory>

namespace ui {

class PresetersMainHub final : public app::InterfaceHub
{
public:
    PresetersMainHub();

    void present() override;
    void showPopover() override;

    std::unique_ptr<HelpWindowPresenter> helpWindowPresenter;
    std::unique_ptr<GreetingsWindowPresenter> greetingsWindowPresenter;
    std::unique_ptr<PreferencesWindowPresenter> preferencesWindowPresenter;
    const std::unique_ptr<PopoverInterfacePresenter> popoverInterfacePresenter;
    std::unique_ptr<SelectApplicationsWindowPresenter> selectApplicationsWindowPresenter;
    storage::ConfigurationAndPreferencesService& configurationAndPreferencesService;

private:
    void presentGreeting();
    void hidePopover();
    void showPreferences();
    void showHelp();
    void showSelection();
};

} // namespace ui
