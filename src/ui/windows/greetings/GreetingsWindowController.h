// The window that greets a user who has no password yet. Main thread only.
#pragma once

#include "ui/views/Outlet.h"
#include "ui/views/WindowController.h"

#include <QFrame>

#include <functional>

namespace ui {

class GreetingsWindowController : public WindowController
{
public:
    GreetingsWindowController() = default;

    void showServiceWindow();
    void closeServiceWindow();

    void setupPasswordButtonClick();
    void helpButtonClick();

    /// Ends the process with status 0, without a notice to the helper, which this start has none
    /// of.
    void quitButtonClick();

    Outlet<QFrame> lineViewOutlet;

    std::function<void()> onSetupPasswordRequest;
    std::function<void()> onHelpRequest;

protected:
    std::unique_ptr<PanelWindow> loadWindow() override;
};

} // namespace ui
