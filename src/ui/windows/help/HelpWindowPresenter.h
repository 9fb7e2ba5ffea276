// Owns the help window, and writes to the support for the user. Main thread only.
#pragma once

#include "ui/windows/help/HelpWindowController.h"

namespace ui {

class HelpWindowPresenter
{
public:
    HelpWindowPresenter();

    void present();
    void focus();

    /// Has the desktop begin a message to the support.
    void contactSupport();

    const std::unique_ptr<HelpWindowController> helpWindowController;
};

} // namespace ui
