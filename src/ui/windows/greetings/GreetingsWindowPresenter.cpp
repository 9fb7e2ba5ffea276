#include "ui/windows/greetings/GreetingsWindowPresenter.h"

namespace ui {

GreetingsWindowPresenter::GreetingsWindowPresenter()
    : greetingsWindowController(std::make_unique<GreetingsWindowController>())
{
}

void GreetingsWindowPresenter::present()
{
    greetingsWindowController->showServiceWindow();
    greetingsWindowController->onSetupPasswordRequest = onSetupPasswordRequest;
    greetingsWindowController->onHelpRequest = onHelpRequest;
}

void GreetingsWindowPresenter::stopService()
{
    greetingsWindowController->closeServiceWindow();
}

} // namespace ui
