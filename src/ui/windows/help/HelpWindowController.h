// The window that shows the help page. The page is loaded once. Main thread only.
#pragma once

#include "ui/views/Outlet.h"
#include "ui/views/WindowController.h"
#include "ui/windows/help/HelpPage.h"

#include <functional>

namespace ui {

class HelpWindowController : public WindowController
{
public:
    HelpWindowController() = default;

    void windowDidLoad() override;

    void showWindowService();
    void focus();
    void contactSupportButtonClick();

    Outlet<HelpPage> webviewOutlet;

    std::function<void()> onContactSupport;

protected:
    std::unique_ptr<PanelWindow> loadWindow() override;

private:
    void loadPage();
};

} // namespace ui
