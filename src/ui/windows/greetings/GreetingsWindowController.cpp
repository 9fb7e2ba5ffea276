#include "ui/windows/greetings/GreetingsWindowController.h"

#include "platform/Call.h"
#include "platform/Platform.h"
#include "platform/ProcessInfo.h"
#include "ui_GreetingsWindow.h"

namespace ui {

std::unique_ptr<PanelWindow> GreetingsWindowController::loadWindow()
{
    auto window = std::make_unique<PanelWindow>();
    Ui::GreetingsWindow form;
    form.setupUi(window.get());
    lineViewOutlet = form.lineViewOutlet;
    QObject::connect(form.setupPasswordButton, &QPushButton::clicked, window.get(), [this] {
        setupPasswordButtonClick();
    });
    QObject::connect(form.helpButton, &QPushButton::clicked, window.get(), [this] {
        helpButtonClick();
    });
    QObject::connect(form.quitButton, &QPushButton::clicked, window.get(), [this] {
        quitButtonClick();
    });
    form.setupPasswordButton->setFocus();
    return window;
}

void GreetingsWindowController::showServiceWindow()
{
    window().makeKeyAndOrderFront();
}

void GreetingsWindowController::closeServiceWindow()
{
    close();
}

void GreetingsWindowController::setupPasswordButtonClick()
{
    platform::call(onSetupPasswordRequest);
}

void GreetingsWindowController::helpButtonClick()
{
    platform::call(onHelpRequest);
}

void GreetingsWindowController::quitButtonClick()
{
    platform::current().processInfo.exit(0);
}

} // namespace ui
