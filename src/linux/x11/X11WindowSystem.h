// Applications' windows and which of them is in front, on an X11 desktop with or without a window
// manager. A window of this program's own that comes to the front of a lock gives the focus back to
// it; a window that is to come to the front when a lock ends does so though the window manager
// first thinks of another. Main thread only.
#pragma once

#include "linux/workspace/WindowSystem.h"
#include "linux/x11/ClientWindows.h"
#include "linux/x11/FrontRequest.h"
#include "linux/x11/StartupMessages.h"
#include "linux/x11/WindowActivation.h"
#include "linux/x11/X11Desktop.h"
#include "linux/x11/X11Guard.h"
#include "platform/Lifetime.h"
#include "platform/Timers.h"

#include <set>
#include <utility>

namespace x11 {

class X11WindowSystem final : public workspace::WindowSystem
{
public:
    /// All of them must outlive this; it takes the guard's `onFocusChanged`.
    X11WindowSystem(X11Desktop& desktop, X11Guard& guard, platform::Timers& timers);
    ~X11WindowSystem() override;
    X11WindowSystem(const X11WindowSystem&) = delete;
    X11WindowSystem& operator=(const X11WindowSystem&) = delete;
    X11WindowSystem(X11WindowSystem&&) = delete;
    X11WindowSystem& operator=(X11WindowSystem&&) = delete;

    void start() override;
    bool bringForward(pid_t processIdentifier) override;
    bool bringForward(const std::set<std::uint64_t>& windows) override;
    void bringWindowForward(std::uint64_t window) override;

private:
    void handle(const xcb_generic_event_t& event);
    void wireClients();
    void handleMessage(const xcb_client_message_event_t& event);
    void handleProperty(const xcb_property_notify_event_t& event);
    void lockFocusChanged(bool focused);
    void readActiveWindow();
    xcb_window_t activeWindow() const;
    void confirmThatNoneIsActive();
    void windowBecameActive(xcb_window_t window);
    bool bringFoundForward(xcb_window_t window);
    void checkFrontLater();
    void checkFront();
    void setActive(pid_t process, xcb_window_t window);

    X11Desktop& desktop;
    X11Guard& guard;
    platform::Timers& timers;
    WindowInspector inspector;
    ClientWindows clients;
    StartupMessages startupMessages;
    WindowActivation activation;
    FrontRequest frontRequest;
    bool lockFocused = false;
    std::pair<pid_t, xcb_window_t> active; // what was told last
    platform::Lifetime lifetime;
    X11Desktop::Subscription subscription;
};

} // namespace x11
