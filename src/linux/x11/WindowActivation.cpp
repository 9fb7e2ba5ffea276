#include "linux/x11/WindowActivation.h"

#include <array>
#include <utility>

namespace x11 {

WindowActivation::WindowActivation(const X11Desktop& desktop, const ClientWindows& clients)
    : desktop(desktop),
      clients(clients),
      clock(xcb_generate_id(desktop.connection().get()))
{
    constexpr std::uint32_t MASK = XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK;
    const std::array<std::uint32_t, 2> values{1, XCB_EVENT_MASK_PROPERTY_CHANGE};
    xcb_create_window(
        desktop.connection().get(),
        XCB_COPY_FROM_PARENT,
        clock,
        desktop.connection().root(),
        -1,
        -1,
        1,
        1,
        0,
        XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT,
        MASK,
        values.data()
    );
    desktop.connection().flush();
}

WindowActivation::~WindowActivation()
{
    xcb_destroy_window(desktop.connection().get(), clock);
    desktop.connection().flush();
}

void WindowActivation::request(xcb_window_t window)
{
    wanted = window;
    xcb_change_property(
        desktop.connection().get(),
        XCB_PROP_MODE_APPEND,
        clock,
        desktop.atoms().serverTime,
        XCB_ATOM_CARDINAL,
        32,
        0,
        nullptr
    );
    desktop.connection().flush();
}

bool WindowActivation::handle(const xcb_property_notify_event_t& event)
{
    if (event.window != clock) {
        return false;
    }
    const xcb_window_t window = std::exchange(wanted, XCB_NONE);
    if (window != XCB_NONE) {
        ask(window, event.time);
    }
    return true;
}

void WindowActivation::ask(xcb_window_t window, xcb_timestamp_t time) const
{
    if (clients.managed()) {
        askWindowManager(window, time);
    } else {
        askServer(window, time);
    }
    desktop.connection().flush();
}

void WindowActivation::askWindowManager(xcb_window_t window, xcb_timestamp_t time) const
{
    constexpr std::uint32_t ON_BEHALF_OF_THE_USER = 2;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = desktop.atoms().activeWindow;
    message.data.data32[0] = ON_BEHALF_OF_THE_USER;
    message.data.data32[1] = time;
    xcb_send_event(
        desktop.connection().get(),
        0,
        desktop.connection().root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        static_cast<const char*>(static_cast<const void*>(&message))
    );
}

void WindowActivation::askServer(xcb_window_t window, xcb_timestamp_t time) const
{
    xcb_connection_t* const connection = desktop.connection().get();
    const std::array<std::uint32_t, 1> above{XCB_STACK_MODE_ABOVE};
    xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_STACK_MODE, above.data());
    xcb_set_input_focus(connection, XCB_INPUT_FOCUS_POINTER_ROOT, window, time);
}

} // namespace x11
