// The window in which a password is set or changed. It reports what was typed and judges nothing.
// Main thread only.
#pragma once

#include "toolkit/TextMovement.h"
#include "ui/views/Outlet.h"
#include "ui/views/TextField.h"
#include "ui/views/WindowController.h"

#include <QFrame>

#include <functional>
#include <string>

namespace ui {

class PreferencesWindowController : public WindowController
{
public:
    PreferencesWindowController() = default;

    void windowDidLoad() override;

    void showServiceWindow();
    void closeServiceWindow();

    /// Empties both fields and brings the window forward with the caret in the first.
    void focus();

    void confirmButtonClick();
    void cancelButtonClick();

    /// The editing of the confirmation ended.
    void controlTextDidEndEditing(toolkit::TextMovement movement);

    /// An alert on this window.
    void showErrorMessage(const std::string& text);

    Outlet<QFrame> lineViewOutlet;
    Outlet<TextField> passwordTextFieldOutlet;
    Outlet<TextField> confirmPasswordTextFieldOutlet;

    std::function<void()> onCancel;
    std::function<void(const std::string& password, const std::string& confirmation)>
        onPasswordEntered;

protected:
    std::unique_ptr<PanelWindow> loadWindow() override;

private:
    void submit();
};

} // namespace ui
