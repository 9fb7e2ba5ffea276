#include "ui/windows/preferences/PreferencesWindowController.h"

#include "platform/Call.h"
#include "platform/Secret.h"
#include "toolkit/TypedSecret.h"
#include "ui/alerts/AlertMessagesService.h"
#include "ui_PreferencesWindow.h"

namespace ui {

std::unique_ptr<PanelWindow> PreferencesWindowController::loadWindow()
{
    auto window = std::make_unique<PanelWindow>();
    Ui::PreferencesWindow form;
    form.setupUi(window.get());
    lineViewOutlet = form.lineViewOutlet;
    passwordTextFieldOutlet = form.passwordTextFieldOutlet;
    confirmPasswordTextFieldOutlet = form.confirmPasswordTextFieldOutlet;
    QObject::connect(form.confirmButton, &QPushButton::clicked, window.get(), [this] {
        confirmButtonClick();
    });
    QObject::connect(form.cancelButton, &QPushButton::clicked, window.get(), [this] {
        cancelButtonClick();
    });
    form.passwordTextFieldOutlet->setFocus();
    return window;
}

void PreferencesWindowController::windowDidLoad()
{
    confirmPasswordTextFieldOutlet->onEndEditing = [this](toolkit::TextMovement movement) {
        controlTextDidEndEditing(movement);
    };
}

void PreferencesWindowController::showServiceWindow()
{
    window().makeKeyAndOrderFront();
}

void PreferencesWindowController::closeServiceWindow()
{
    close();
}

void PreferencesWindowController::focus()
{
    PanelWindow& panel = window();
    passwordTextFieldOutlet->clear();
    confirmPasswordTextFieldOutlet->clear();
    passwordTextFieldOutlet->setFocus();
    panel.makeKeyAndOrderFront();
}

void PreferencesWindowController::confirmButtonClick()
{
    submit();
}

void PreferencesWindowController::cancelButtonClick()
{
    platform::call(onCancel);
}

void PreferencesWindowController::controlTextDidEndEditing(toolkit::TextMovement movement)
{
    if (movement == toolkit::TextMovement::Return) {
        submit();
    }
}

void PreferencesWindowController::showErrorMessage(const std::string& text)
{
    AlertMessagesService().showAlert(
        "There was an error..", text, AlertMessagesService::CRITICAL, &window()
    );
}

void PreferencesWindowController::submit()
{
    const platform::Secret password = toolkit::typedSecret(*passwordTextFieldOutlet);
    const platform::Secret confirmation = toolkit::typedSecret(*confirmPasswordTextFieldOutlet);
    platform::call(onPasswordEntered, password.text(), confirmation.text());
}

} // namespace ui
