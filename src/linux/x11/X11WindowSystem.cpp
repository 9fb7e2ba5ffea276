#include "linux/x11/X11WindowSystem.h"

#include "platform/Call.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <unistd.h>

namespace x11 {

namespace {

/// Between two windows a window manager names none for a moment.
constexpr double SECONDS_BETWEEN_WINDOWS = 0.3;

/// A window manager need not say that it overruled a request: nothing changes then.
constexpr double SECONDS_UNTIL_FRONT_IS_CHECKED = 0.1;

} // namespace

X11WindowSystem::X11WindowSystem(X11Desktop& desktop, X11Guard& guard, platform::Timers& timers)
    : desktop(desktop),
      guard(guard),
      timers(timers),
      inspector(desktop),
      clients(desktop),
      activation(desktop, clients)
{
    wireClients();
}

void X11WindowSystem::wireClients()
{
    clients.onShown = [this](const workspace::WindowFacts& facts) {
        platform::call(onWindowShown, facts);
    };
    clients.onGone = [this](xcb_window_t window) {
        if (window == frontRequest.window()) {
            frontRequest.withdraw();
        }
        platform::call(onWindowGone, window);
    };
}

X11WindowSystem::~X11WindowSystem()
{
    guard.onFocusChanged = nullptr;
}

void X11WindowSystem::start()
{
    subscription = desktop.subscribe([this](const xcb_generic_event_t& event) { handle(event); });
    guard.onFocusChanged = [this](bool focused) { lockFocusChanged(focused); };
    clients.start();
    readActiveWindow();
}

bool X11WindowSystem::bringForward(pid_t processIdentifier)
{
    return bringFoundForward(clients.latest([processIdentifier](const workspace::WindowFacts& facts
                                            ) {
        return facts.processIdentifier == processIdentifier;
    }));
}

bool X11WindowSystem::bringForward(const std::set<std::uint64_t>& windows)
{
    return bringFoundForward(clients.latest([&](const workspace::WindowFacts& facts) {
        return windows.contains(facts.window);
    }));
}

bool X11WindowSystem::bringFoundForward(xcb_window_t window)
{
    if (window == XCB_NONE) {
        return false;
    }
    bringWindowForward(window);
    return !desktop.connection().broken();
}

void X11WindowSystem::bringWindowForward(std::uint64_t window)
{
    const auto wanted = static_cast<xcb_window_t>(window);
    if (lockFocused || guard.hasKeyWindow()) {
        frontRequest.made(wanted, FrontRequest::Clock::now());
        checkFrontLater();
    } else {
        frontRequest.withdraw();
    }
    activation.request(wanted);
}

void X11WindowSystem::handle(const xcb_generic_event_t& event)
{
    clients.handle(event);
    if (typeOf(event) == XCB_PROPERTY_NOTIFY) {
        handleProperty(as<xcb_property_notify_event_t>(event));
    } else if (typeOf(event) == XCB_CLIENT_MESSAGE) {
        handleMessage(as<xcb_client_message_event_t>(event));
    } else if (typeOf(event) == XCB_FOCUS_IN) {
        const auto& focus = as<xcb_focus_in_event_t>(event);
        const bool really =
            focus.mode == XCB_NOTIFY_MODE_NORMAL || focus.mode == XCB_NOTIFY_MODE_WHILE_GRABBED;
        if (really && focus.detail != XCB_NOTIFY_DETAIL_POINTER && !clients.managed()) {
            windowBecameActive(focus.event);
        }
    }
}

void X11WindowSystem::handleMessage(const xcb_client_message_event_t& event)
{
    const Atoms& atoms = desktop.atoms();
    const bool begins = event.type == atoms.startupInfoBegin;
    if (event.format != 8 || (!begins && event.type != atoms.startupInfo)) {
        return;
    }
    const auto* bytes = static_cast<const char*>(static_cast<const void*>(&event.data.data8[0]));
    const std::string_view part(bytes, sizeof event.data.data8);
    const std::optional<std::string> message = startupMessages.add(event.window, begins, part);
    const std::optional<std::string> entry = message ? launchedEntry(*message) : std::nullopt;
    if (entry) {
        platform::call(onLaunchHint, *entry);
    }
}

void X11WindowSystem::handleProperty(const xcb_property_notify_event_t& event)
{
    if (activation.handle(event)) {
        return;
    }
    const Atoms& atoms = desktop.atoms();
    if (event.window == desktop.connection().root() &&
        (event.atom == atoms.activeWindow || event.atom == atoms.clientList)) {
        readActiveWindow();
    }
}

void X11WindowSystem::lockFocusChanged(bool focused)
{
    lockFocused = focused;
    if (focused) {
        setActive(getpid(), XCB_NONE);
    } else {
        frontRequest.lockLeft(FrontRequest::Clock::now());
        readActiveWindow();
    }
}

void X11WindowSystem::checkFrontLater()
{
    const auto check = [this] {
        checkFront();
        if (frontRequest.pending(FrontRequest::Clock::now())) {
            checkFrontLater();
        }
    };
    timers.scheduleTimer(SECONDS_UNTIL_FRONT_IS_CHECKED, false, lifetime.guard(check));
}

void X11WindowSystem::checkFront()
{
    const auto now = FrontRequest::Clock::now();
    // What happens before the window manager has even heard of a request does not overrule it.
    if (!lockFocused && !activation.underWay() && frontRequest.pending(now) &&
        frontRequest.overruledBy(activeWindow(), now)) {
        activation.request(frontRequest.window());
    }
}

void X11WindowSystem::readActiveWindow()
{
    const xcb_window_t active = activeWindow();
    if (active != XCB_NONE) {
        windowBecameActive(active);
        return;
    }
    const auto confirm = [this] { confirmThatNoneIsActive(); };
    timers.scheduleTimer(SECONDS_BETWEEN_WINDOWS, false, lifetime.guard(confirm));
}

xcb_window_t X11WindowSystem::activeWindow() const
{
    if (!clients.managed()) {
        return inspector.focusedWindow();
    }
    const Atoms& atoms = desktop.atoms();
    const xcb_window_t root = desktop.connection().root();
    const auto active = inspector.identifiers(root, atoms.activeWindow, XCB_ATOM_WINDOW);
    const auto listed = inspector.identifiers(root, atoms.clientList, XCB_ATOM_WINDOW);
    // A window manager may leave the last window's name behind when that has gone.
    const bool isThere =
        !active.empty() && std::find(listed.begin(), listed.end(), active.front()) != listed.end();
    return isThere ? active.front() : XCB_NONE;
}

void X11WindowSystem::confirmThatNoneIsActive()
{
    if (!lockFocused && activeWindow() == XCB_NONE) {
        setActive(0, XCB_NONE);
    }
}

void X11WindowSystem::windowBecameActive(xcb_window_t window)
{
    clients.noteUse(window);
    const pid_t process = clients.processOf(window);
    // The captured keys are the lock's, but a toolkit hands them to whichever of its own windows
    // has the focus.
    if (process == getpid() && guard.hasKeyWindow()) {
        guard.focusKeyWindow();
    }
    if (!lockFocused) {
        setActive(process, window);
        checkFront();
    }
}

void X11WindowSystem::setActive(pid_t process, xcb_window_t window)
{
    if (std::exchange(active, {process, window}) == std::pair(process, window)) {
        return;
    }
    platform::call(onActiveChanged, process, window);
}

} // namespace x11
