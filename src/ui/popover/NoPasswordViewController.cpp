#include "ui/popover/NoPasswordViewController.h"

#include "platform/Call.h"
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
    platform::call(onPasswordSetupRequest);
}

void NoPasswordViewController::helpButtonClick()
{
    platform::call(onHelpRequest);
}

} // namespace ui
