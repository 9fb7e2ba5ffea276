// The popover's page while no password is set. Main thread only.
#pragma once

#include "ui/views/ViewController.h"

#include <functional>

namespace ui {

class NoPasswordViewController : public ViewController
{
public:
    NoPasswordViewController() = default;

    void setupPasswordButtonClick();
    void helpButtonClick();

    std::function<void()> onHelpRequest;
    std::function<void()> onPasswordSetupRequest;

protected:
    std::unique_ptr<QWidget> loadView() override;
};

} // namespace ui
