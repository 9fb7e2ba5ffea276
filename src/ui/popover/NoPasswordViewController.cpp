#include "ui/popover/NoPasswordViewController.h"

#include "ui_NoPasswordView.h"

namespace ui {

std::unique_ptr<QWidget> NoPasswordViewController::loadView()
{
    auto page = std::make_unique<QWidget>();
    Ui::NoPasswordView form;
    form.setupUi(page.get());
    QObject::connect(form.setupPasswordButton, &QPushButton::clicked, page.get(), [this] {
        setupPasswordButtonClick();
    });
    QObject::connect(form.helpButton, &QPushButton::clicked, page.get(), [this] {
        helpButtonClick();
    });
    return page;
}

void NoPasswordViewController::setupPasswordButtonClick()
{
    const std::function<void()> listener = onPasswordSetupRequest;
    if (listener) {
        listener();
    }
}

void NoPasswordViewController::helpButtonClick()
{
    const std::function<void()> listener = onHelpRequest;
    if (listener) {
        listener();
    }
}

} // namespace ui
