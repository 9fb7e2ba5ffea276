#include "ui/windows/help/HelpWindowPresenter.h"

#include "platform/Platform.h"
#include "platform/Workspace.h"

namespace ui {

HelpWindowPresenter::HelpWindowPresenter()
    : helpWindowController(std::make_unique<HelpWindowController>())
{
}

void HelpWindowPresenter::present()
{
    helpWindowController->onContactSupport = [this] { contactSupport(); };
    helpWindowController->showWindowService();
}

void HelpWindowPresenter::focus()
{
    helpWindowController->focus();
}

void HelpWindowPresenter::contactSupport()
{
    platform::current().workspace.openUrl("mailto:support@quorvent.example?Subject=Tarvel%20Support"
    );
}

} // namespace ui
