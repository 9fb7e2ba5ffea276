// The popover's page that asks for the password. It reports what was typed; whoever is told
// compares it. Main thread only.
#pragma once

#include "toolkit/BounceAnimation.h"
#include "toolkit/TextMovement.h"
#include "ui/views/Outlet.h"
#include "ui/views/TextField.h"
#include "ui/views/ViewController.h"

#include <functional>
#include <string>

namespace ui {

class RequestPasswordViewController : public ViewController
{
public:
    RequestPasswordViewController() = default;

    void viewDidLoad() override;
    void viewWillAppear() override;
    void viewDidDisappear() override;

    void passwordEnterButtonClick();
    void helpButtonClick();

    /// The editing of the password ended.
    void controlTextDidEndEditing(toolkit::TextMovement movement);

    /// Shakes the page.
    void wrongPassword();

    Outlet<TextField> passwordTextFieldOutlet;
    Outlet<QWidget> centralViewOutlet;

    std::function<void()> onHelpRequest;
    std::function<void(const std::string&)> onPasswordEntered;

protected:
    std::unique_ptr<QWidget> loadView() override;

private:
    void submit();

    std::unique_ptr<toolkit::BounceAnimation> shake;
};

} // namespace ui
