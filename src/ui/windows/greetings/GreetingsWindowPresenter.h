// Owns the greeting and passes the user's choices on. Main thread only.
#pragma once

#include "ui/windows/greetings/GreetingsWindowController.h"

namespace ui {

class GreetingsWindowPresenter
{
public:
    GreetingsWindowPresenter();

    /// Shows the window. The two callbacks are handed on as they are now.
    void present();
    void stopService();

    const std::unique_ptr<GreetingsWindowController> greetingsWindowController;

    std::function<void()> onSetupPasswordRequest;
    std::function<void()> onHelpRequest;
};

} // namespace ui
