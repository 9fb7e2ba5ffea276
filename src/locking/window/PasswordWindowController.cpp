#include "locking/window/PasswordWindowController.h"

#include "app/BackgroundRunner.h"
#include "locking/CoveringWindow.h"
#include "locking/window/BorderlessKeyWindow.h"
#include "locking/window/ThisAgent.h"
#include "platform/Application.h"
#include "platform/Call.h"
#include "platform/Fatal.h"
#include "platform/KeyboardStatus.h"
#include "platform/Platform.h"
#include "platform/Screens.h"
#include "platform/Secret.h"
#include "toolkit/TypedSecret.h"
#include "ui_PasswordWindow.h"

#include <QPushButton>

#include <utility>

namespace locking {

using toolkit::TextMovement;

namespace {

constexpr unsigned LOCK_PRESENTATION =
    platform::PRESENTATION_AUTO_HIDE_MENU_BAR | platform::PRESENTATION_HIDE_MENU_BAR |
    platform::PRESENTATION_DISABLE_FORCE_QUIT | platform::PRESENTATION_AUTO_HIDE_DOCK |
    platform::PRESENTATION_DISABLE_PROCESS_SWITCHING |
    platform::PRESENTATION_DISABLE_HIDE_APPLICATION;
static_assert(LOCK_PRESENTATION == 0x16D);

} // namespace

PasswordWindowController::PasswordWindowController()
{
    windowDidLoad();
}

PasswordWindowController::~PasswordWindowController()
{
    if (observing) {
        teardown();
    }
}

void PasswordWindowController::prepare()
{
    PasswordWindowView().drawUnseen();
}

void PasswordWindowController::windowDidLoad()
{
    observeAndMonitor();
    styleWindow();
    showState();
    // The toolkit may learn of new places later than the port does, and reckons with its own.
    screens.emplace([this] { screensChanged(); });
}

/// A screen that only changes its size or its place needs no new lock.
void PasswordWindowController::placeOnMainScreen()
{
    const std::optional<platform::Screen> mainScreen = platform::current().screens.mainScreen();
    if (mainScreen.has_value()) {
        view.place(mainScreen->frame);
        showState();
    }
}

void PasswordWindowController::observeAndMonitor()
{
    using Controller = PasswordWindowController;
    const platform::Platform& platform = platform::current();
    view.outlets->passwordFieldOutlet->onEndEditing = [this](TextMovement movement) {
        controlTextDidEndEditing(movement);
    };
    QObject::connect(view.outlets->keyboardLayoutButton, &QPushButton::clicked, [] {
        platform::current().keyboardStatus.nextLayout();
    });
    platform.workspace.addObserver(
        this,
        platform::WorkspaceNotificationName::DidActivateApplication,
        whileAlive(&Controller::windowGotFocus)
    );
    platform.workspace.addObserver(
        this,
        platform::WorkspaceNotificationName::DidDeactivateApplication,
        whileAlive(&Controller::windowLostFocus)
    );
    localKeyboardHandler = platform.eventMonitors.addLocalMonitor(
        platform::EVENT_MASK_FLAGS_CHANGED, whileAlive(&Controller::localKeyboardKeyPressed)
    );
    globalKeyboardHandler = platform.eventMonitors.addGlobalMonitor(
        platform::EVENT_MASK_FLAGS_CHANGED, whileAlive(&Controller::globalKeyboardKeyPressed)
    );
    observing = true;

    // Left in place at the end: by then it may be that of the lock that replaced this one.
    platform.keyboardStatus.observe(lifetime.guard([this] { view.showKeyboardStatus(); }));
}

void PasswordWindowController::styleWindow()
{
    const platform::Platform& platform = platform::current();
    const std::optional<platform::Screen> mainScreen = platform.screens.mainScreen();
    if (!mainScreen.has_value()) {
        platform::fatal("there is no main screen to lock");
    }
    view.place(mainScreen->frame);
    adoptedWindow =
        platform.windows.adoptWindow(window().winId(), coveringWindowAttributes(mainScreen->frame));
    view.clear();
}

void PasswordWindowController::showState()
{
    view.showMessage(displayMessage, appIcon);
    view.showKeyboardStatus();
}

void PasswordWindowController::showServiceWindow(
    const std::string& message, const platform::IconHandle& icon
)
{
    platform::current().application.setPresentationOptions(LOCK_PRESENTATION);
    displayMessage = message;
    appIcon = icon;
    showState();
    runOnMainQueue([this] { bringToFront(); });
}

void PasswordWindowController::focus()
{
    runOnMainQueue([this] { bringToFront(); });
}

void PasswordWindowController::bringToFront()
{
    window().show();
    adoptedWindow->makeKeyAndOrderFront();
    platform::current().application.activate(true);
    window().activateWindow();
    makePasswordFieldFirstResponder();
}

void PasswordWindowController::makePasswordFieldFirstResponder()
{
    view.outlets->passwordFieldOutlet->setFocus();
}

void PasswordWindowController::screensChanged()
{
    runOnMainQueue([this] {
        placeOnMainScreen();
        bringToFront();
    });
}

void PasswordWindowController::displayErrorMessage(const std::string& message)
{
    runOnMainQueue([this, message] { view.showError(message); });
}

void PasswordWindowController::teardown()
{
    const platform::Platform& platform = platform::current();
    platform.workspace.removeObserver(
        this, platform::WorkspaceNotificationName::DidActivateApplication
    );
    platform.workspace.removeObserver(
        this, platform::WorkspaceNotificationName::DidDeactivateApplication
    );
    platform.workspace.removeObserver(this);
    for (auto* const handle : {&localKeyboardHandler, &globalKeyboardHandler}) {
        if (handle->has_value()) {
            platform.eventMonitors.removeMonitor(**handle);
            handle->reset();
        }
    }
    observing = false;
}

void PasswordWindowController::close()
{
    closed = true;
    view.outlets->passwordFieldOutlet->clear();
    adoptedWindow->close();
    window().hide();
}

void PasswordWindowController::closeServiceWindow()
{
    platform::current().application.setPresentationOptions(platform::PRESENTATION_DEFAULT);
    teardown();
    close();
}

void PasswordWindowController::localKeyboardKeyPressed(const platform::Event& event)
{
    keyPressed(event);
}

void PasswordWindowController::globalKeyboardKeyPressed(const platform::Event& event)
{
    keyPressed(event);
}

void PasswordWindowController::keyPressed(const platform::Event& event)
{
    if ((event.modifierFlags & platform::MODIFIER_FLAG_OPTION) == 0U) {
        return;
    }
    lostFocusByPressingSpecialKey = true;
    platform::call(specialKeyPressed);
}

void PasswordWindowController::windowLostFocus(const platform::WorkspaceNotification& notification)
{
    if (!lostFocusByPressingSpecialKey && concernsThisAgent(notification)) {
        focus();
    }
}

void PasswordWindowController::windowGotFocus(const platform::WorkspaceNotification& notification)
{
    if (concernsThisAgent(notification)) {
        lostFocusByPressingSpecialKey = false;
    }
}

void PasswordWindowController::controlTextDidEndEditing(TextMovement movement)
{
    if (movement != TextMovement::Return) {
        return;
    }
    view.outlets->errorMessageLabelOutlet->clear();
    const platform::Lifetime::Watch watch = lifetime.watch();
    const platform::Secret typed = toolkit::typedSecret(*view.outlets->passwordFieldOutlet);
    platform::call(passwordEntered, typed.text());
    if (watch.hasEnded()) {
        return; // the listener has put another lock in place of this one
    }
    makePasswordFieldFirstResponder();
    view.outlets->passwordFieldOutlet->selectAll(); // what is typed next replaces what was wrong
}

void PasswordWindowController::runOnMainQueue(std::function<void()> step)
{
    app::BackgroundRunner::runOnMainThread(lifetime.guard([this, step = std::move(step)] {
        if (!closed) {
            step();
        }
    }));
}

template <typename Argument>
std::function<void(const Argument&)>
PasswordWindowController::whileAlive(void (PasswordWindowController::*handler)(const Argument&))
{
    return lifetime.guard([this, handler](const Argument& argument) { (this->*handler)(argument); }
    );
}

} // namespace locking
