#include "linux/x11/GuardLoop.h"

#include <algorithm>
#include <limits>
#include <utility>

#include <xcb/randr.h>

namespace x11 {

namespace {

constexpr int BACKDROP_LEVEL = std::numeric_limits<int>::min();

using Due = std::optional<GuardLoop::Clock::time_point>;

Due earlier(Due one, Due other)
{
    if (!one.has_value() || !other.has_value()) {
        return one.has_value() ? one : other;
    }
    return std::min(*one, *other);
}

bool isDue(Due due, GuardLoop::Clock::time_point now)
{
    return due.has_value() && *due <= now;
}

} // namespace

GuardLoop::GuardLoop(const Connection& connection, platform::Report report)
    : connection(connection),
      backdrop(connection),
      stack(connection),
      keyWindows(connection),
      capture(connection, std::move(report)),
      forwarder(connection)
{
    connection.selectEvents(
        connection.root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
            XCB_EVENT_MASK_FOCUS_CHANGE
    );
    if (connection.extensions().randr) {
        xcb_randr_select_input(
            connection.get(), connection.root(), XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE
        );
    }
    connection.flush();
}

void GuardLoop::cover()
{
    stack.insert(backdrop.window(), BACKDROP_LEVEL);
    backdrop.show();
    raiseNow();
    forwarder.reset();
    capture.begin();
}

void GuardLoop::uncover()
{
    stack.remove(backdrop.window());
    backdrop.hide();
    capture.end(); // at once with the cover: what is seen can be clicked
    forwarder.reset();
    connection.flush();
    backdrop.fitDesktop(); // for the next time, when there is no time to ask
}

void GuardLoop::show(xcb_window_t window, int level)
{
    place(window, level);
    xcb_map_window(connection.get(), window);
    connection.flush();
}

void GuardLoop::hide(xcb_window_t window)
{
    release(window);
    xcb_unmap_window(connection.get(), window);
    connection.flush();
}

void GuardLoop::destroy(xcb_window_t window)
{
    release(window);
    xcb_destroy_window(connection.get(), window);
    connection.flush();
}

void GuardLoop::release(xcb_window_t window)
{
    stack.remove(window);
    keyWindows.remove(window);
    forwarder.setTarget(keyWindows.shown());
}

void GuardLoop::makeKey(xcb_window_t window, int level)
{
    place(window, level);
    keyWindows.add(window);
    forwarder.setTarget(keyWindows.shown());
}

void GuardLoop::focusKeyWindow()
{
    keyWindows.wantFocus();
}

void GuardLoop::handle(const xcb_generic_event_t& event)
{
    switch (typeOf(event)) {
    case XCB_CREATE_NOTIFY:
        handleStacking(as<xcb_create_notify_event_t>(event).window);
        break;
    case XCB_REPARENT_NOTIFY:
        handleStacking(as<xcb_reparent_notify_event_t>(event).window);
        break;
    case XCB_CIRCULATE_NOTIFY:
        raiseWanted = true;
        break;
    case XCB_MAP_NOTIFY:
        keyWindows.windowMapped(as<xcb_map_notify_event_t>(event).window);
        handleStacking(as<xcb_map_notify_event_t>(event).window);
        break;
    case XCB_UNMAP_NOTIFY:
        keyWindows.windowUnmapped(as<xcb_unmap_notify_event_t>(event).window);
        break;
    case XCB_DESTROY_NOTIFY:
        release(as<xcb_destroy_notify_event_t>(event).window);
        break;
    case XCB_CONFIGURE_NOTIFY:
        handleConfigure(as<xcb_configure_notify_event_t>(event));
        break;
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT:
        handleFocus(as<xcb_focus_in_event_t>(event));
        break;
    case XCB_GE_GENERIC:
        handleInput(as<xcb_ge_generic_event_t>(event));
        break;
    default:
        handleScreenChange(event);
        break;
    }
}

std::optional<GuardLoop::Clock::time_point> GuardLoop::work()
{
    const Clock::time_point now = Clock::now();
    forwarder.setTarget(keyWindows.shown());
    keepOnTop(now);
    keepCaptured(now);
    if (isDue(keyWindows.due(), now)) {
        keyWindows.giveFocus();
    }
    return earlier(stackDue(), earlier(capture.due(), keyWindows.due()));
}

void GuardLoop::place(xcb_window_t window, int level)
{
    stack.insert(window, level);
    raiseNow();
}

void GuardLoop::handleStacking(xcb_window_t window)
{
    if (stack.contains(window)) {
        checkWanted = true;
    } else {
        raiseWanted = true;
    }
}

void GuardLoop::handleConfigure(const xcb_configure_notify_event_t& event)
{
    if (event.window == connection.root()) {
        backdrop.fitDesktop();
    } else {
        handleStacking(event.window);
    }
}

void GuardLoop::handleFocus(const xcb_focus_in_event_t& event)
{
    if (event.event == connection.root() && event.mode == XCB_NOTIFY_MODE_UNGRAB) {
        capture.hint();
    }
    keyWindows.focusChanged(event);
    if (capture.missing() && !keyWindows.focused()) {
        keyWindows.wantFocus(); // who has it is given the next key as soon as the holder lets go
    }
}

void GuardLoop::handleInput(const xcb_ge_generic_event_t& event)
{
    if (event.extension != connection.extensions().xinputOpcode) {
        return;
    }
    switch (event.event_type) {
    case XCB_INPUT_HIERARCHY:
        capture.devicesChanged();
        break;
    case XCB_INPUT_KEY_PRESS:
    case XCB_INPUT_KEY_RELEASE:
        forwarder.key(
            *static_cast<const xcb_input_key_press_event_t*>(static_cast<const void*>(&event))
        );
        break;
    case XCB_INPUT_BUTTON_PRESS:
    case XCB_INPUT_BUTTON_RELEASE:
        forwarder.button(
            *static_cast<const xcb_input_button_press_event_t*>(static_cast<const void*>(&event))
        );
        break;
    default:
        break;
    }
}

void GuardLoop::handleScreenChange(const xcb_generic_event_t& event)
{
    const Extensions& extensions = connection.extensions();
    if (extensions.randr &&
        typeOf(event) == extensions.randrFirstEvent + XCB_RANDR_SCREEN_CHANGE_NOTIFY) {
        backdrop.fitDesktop();
    }
}

void GuardLoop::raiseNow()
{
    raiseWanted = false;
    checkWanted = true; // a window that is just being destroyed can spoil the order
    ++raiseCount;
    stack.raise();
}

std::optional<GuardLoop::Clock::time_point> GuardLoop::stackDue() const
{
    if (raiseWanted) {
        return limiter.due();
    }
    return checkWanted ? Due(Clock::time_point()) : std::nullopt;
}

void GuardLoop::keepOnTop(Clock::time_point now)
{
    if (stack.empty()) {
        raiseWanted = false;
        checkWanted = false;
        return;
    }
    if (!raiseWanted && std::exchange(checkWanted, false)) {
        raiseWanted = !stack.checkOnTop();
    }
    if (raiseWanted && limiter.take(now)) {
        raiseNow();
    }
}

void GuardLoop::keepCaptured(Clock::time_point now)
{
    if (isDue(capture.due(), now)) {
        capture.attempt();
    }
    if (!std::exchange(wasCaptured, capture.complete()) && wasCaptured) {
        keyWindows.renewFocus(backdrop.window());
    }
}

} // namespace x11
