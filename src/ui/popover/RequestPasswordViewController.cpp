#include "ui/popover/RequestPasswordViewController.h"

#include "app/BackgroundRunner.h"
#include "platform/Call.h"
#include "platform/Secret.h"
#include "toolkit/TypedSecret.h"
#include "ui_RequestPasswordView.h"

namespace ui {

namespace {

/// Upwards, in the view's pixels.
constexpr int SHAKE = -20;

} // namespace

std::unique_ptr<QWidget> RequestPasswordViewController::loadView()
{
    auto page = std::make_unique<QWidget>();
    Ui::RequestPasswordView form;
    form.setupUi(page.get());
    passwordTextFieldOutlet = form.passwordTextFieldOutlet;
    centralViewOutlet = form.centralViewOutlet;
    QObject::connect(form.passwordEnterButton, &QPushButton::clicked, page.get(), [this] {
        passwordEnterButtonClick();
    });
    QObject::connect(form.helpButton, &QPushButton::clicked, page.get(), [this] {
        helpButtonClick();
    });
    return page;
}

void RequestPasswordViewController::viewDidLoad()
{
    passwordTextFieldOutlet->onEndEditing = [this](toolkit::TextMovement movement) {
        controlTextDidEndEditing(movement);
    };
    shake = std::make_unique<toolkit::BounceAnimation>(*centralViewOutlet);
}

void RequestPasswordViewController::viewWillAppear()
{
    if (!passwordTextFieldOutlet) {
        return;
    }
    app::BackgroundRunner::runOnMainThread([field = passwordTextFieldOutlet] {
        if (field) {
            field->setFocus();
        }
    });
}

void RequestPasswordViewController::viewDidDisappear()
{
    passwordTextFieldOutlet->clear();
    passwordTextFieldOutlet->setAccessibleDescription({});
}

void RequestPasswordViewController::passwordEnterButtonClick()
{
    submit();
}

void RequestPasswordViewController::helpButtonClick()
{
    platform::call(onHelpRequest);
}

void RequestPasswordViewController::controlTextDidEndEditing(toolkit::TextMovement movement)
{
    if (movement == toolkit::TextMovement::Return) {
        submit();
    }
}

void RequestPasswordViewController::submit()
{
    if (passwordTextFieldOutlet) {
        const platform::Secret typed = toolkit::typedSecret(*passwordTextFieldOutlet);
        platform::call(onPasswordEntered, typed.text());
    }
}

void RequestPasswordViewController::wrongPassword()
{
    shake->start(SHAKE);
    passwordTextFieldOutlet->setFocus();
    passwordTextFieldOutlet->selectAll(); // what is typed next replaces what was wrong
    passwordTextFieldOutlet->sayWrong(QStringLiteral("Wrong password"));
}

} // namespace ui
