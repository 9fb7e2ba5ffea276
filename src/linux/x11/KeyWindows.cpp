#include "linux/x11/KeyWindows.h"

#include <algorithm>

namespace x11 {

void KeyWindows::add(xcb_window_t window)
{
    std::erase_if(windows, [&](const KeyWindow& entry) { return entry.window == window; });
    connection.selectEvents(window, XCB_EVENT_MASK_FOCUS_CHANGE);
    const auto attributesCookie = xcb_get_window_attributes(connection.get(), window);
    const auto focusCookie = xcb_get_input_focus(connection.get());
    const Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(connection.get(), attributesCookie, nullptr)
    );
    const Reply<xcb_get_input_focus_reply_t> current(
        xcb_get_input_focus_reply(connection.get(), focusCookie, nullptr)
    );
    if (!attributes) {
        return; // it was destroyed meanwhile
    }
    windows.push_back({window, attributes->map_state != XCB_MAP_STATE_UNMAPPED});
    if (current && current->focus == window) {
        focus = window;
    }
    wantFocus();
}

void KeyWindows::remove(xcb_window_t window)
{
    const bool wasKey = !windows.empty() && windows.back().window == window;
    std::erase_if(windows, [&](const KeyWindow& entry) { return entry.window == window; });
    if (focus == window) {
        focus = XCB_NONE;
    }
    focusWanted = !windows.empty() && (focusWanted || wasKey);
}

void KeyWindows::windowMapped(xcb_window_t window)
{
    setMapped(window, true);
    if (shown() == window) {
        wantFocus();
    }
}

void KeyWindows::windowUnmapped(xcb_window_t window)
{
    setMapped(window, false);
    if (focus == window) {
        focus = XCB_NONE;
    }
}

void KeyWindows::focusChanged(const xcb_focus_in_event_t& event)
{
    // Grabs move the keys, not the focus; and a pointer that rests in a window is not its focus.
    if (!contains(event.event) || event.mode == XCB_NOTIFY_MODE_GRAB ||
        event.mode == XCB_NOTIFY_MODE_UNGRAB || event.detail == XCB_NOTIFY_DETAIL_POINTER) {
        return;
    }
    if (typeOf(*static_cast<const xcb_generic_event_t*>(static_cast<const void*>(&event))) ==
        XCB_FOCUS_IN) {
        focus = event.event;
    } else if (focus == event.event && event.detail != XCB_NOTIFY_DETAIL_INFERIOR) {
        focus = XCB_NONE;
    }
}

xcb_window_t KeyWindows::shown() const
{
    return !windows.empty() && windows.back().mapped ? windows.back().window : XCB_NONE;
}

bool KeyWindows::contains(xcb_window_t window) const
{
    return std::any_of(windows.begin(), windows.end(), [&](const KeyWindow& entry) {
        return entry.window == window;
    });
}

void KeyWindows::renewFocus(xcb_window_t other)
{
    if (focused() && shown() != XCB_NONE) {
        setInputFocus(other);
        setInputFocus(shown());
        connection.flush();
    }
}

std::optional<KeyWindows::Clock::time_point> KeyWindows::due() const
{
    return focusWanted && shown() != XCB_NONE ? std::optional(nextFocus) : std::nullopt;
}

void KeyWindows::giveFocus()
{
    focusWanted = false;
    nextFocus = Clock::now() + BETWEEN_FOCUSES;
    setInputFocus(shown());
    connection.flush();
}

void KeyWindows::setMapped(xcb_window_t window, bool mapped)
{
    for (KeyWindow& entry : windows) {
        if (entry.window == window) {
            entry.mapped = mapped;
        }
    }
}

void KeyWindows::setInputFocus(xcb_window_t window) const
{
    xcb_set_input_focus(connection.get(), XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
}

} // namespace x11
