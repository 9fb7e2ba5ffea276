// The password window of one lock: full screen on the main screen, it takes the keyboard back
// whenever this program loses it, and reports the typed password and the special key to its owner.
// Main thread only. Made anew for every lock; once closed it stays closed, whatever was posted
// before. Fatal when the desktop has no main screen.
#pragma once

#include "locking/LockWindow.h"
#include "locking/window/PasswordWindowView.h"
#include "locking/window/ScreenFollower.h"
#include "platform/EventMonitors.h"
#include "platform/Lifetime.h"
#include "platform/Windows.h"
#include "platform/Workspace.h"
#include "toolkit/TextMovement.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace locking {

class PasswordWindowController final : public LockWindow
{
public:
    /// Loads the window from "PasswordWindow"; it is not shown yet.
    PasswordWindowController();

    PasswordWindowController(const PasswordWindowController&) = delete;
    PasswordWindowController& operator=(const PasswordWindowController&) = delete;
    PasswordWindowController(PasswordWindowController&&) = delete;
    PasswordWindowController& operator=(PasswordWindowController&&) = delete;
    ~PasswordWindowController() override;

    /// Draws a window that nobody sees, so that the first lock does not wait for fonts (20 ms and
    /// more). Worth calling once at start.
    static void prepare();

    void
    showServiceWindow(const std::string& message, const platform::IconHandle& appIcon) override;
    void focus() override;
    void screensChanged() override;
    void displayErrorMessage(const std::string& message) override;
    void teardown() override;
    void close() override;

    /// Gives the desktop its default presentation back, then ends the lock.
    void closeServiceWindow();

    void windowLostFocus(const platform::WorkspaceNotification& notification);
    void windowGotFocus(const platform::WorkspaceNotification& notification);
    void localKeyboardKeyPressed(const platform::Event& event);
    void globalKeyboardKeyPressed(const platform::Event& event);
    void controlTextDidEndEditing(toolkit::TextMovement movement);

    BorderlessKeyWindow& window() { return view.window(); }

private:
    void windowDidLoad();
    void observeAndMonitor();
    void styleWindow();
    void placeOnMainScreen();
    void showState();
    void bringToFront();
    void makePasswordFieldFirstResponder();
    void keyPressed(const platform::Event& event);
    void runOnMainQueue(std::function<void()> step);

    template <typename Argument>
    std::function<void(const Argument&)> whileAlive(void (PasswordWindowController::*handler
    )(const Argument&));

    std::string displayMessage;
    platform::IconHandle appIcon;
    std::optional<platform::EventMonitorHandle> localKeyboardHandler;
    std::optional<platform::EventMonitorHandle> globalKeyboardHandler;
    bool lostFocusByPressingSpecialKey = false;

    PasswordWindowView view;
    std::unique_ptr<platform::PlainWindow> adoptedWindow;
    std::optional<ScreenFollower> screens;
    bool observing = false;
    bool closed = false;

    /// What was posted or registered looks at it before it touches this controller.
    platform::Lifetime lifetime;
};

} // namespace locking
