#include "linux/x11/Connection.h"

namespace x11 {

namespace {

xcb_screen_t* screenOf(xcb_connection_t* connection, int number)
{
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 0; xcb_screen_next(&screens), --number) {
        if (number == 0) {
            return screens.data;
        }
    }
    return nullptr;
}

} // namespace

std::unique_ptr<Connection> Connection::open(const std::string& display)
{
    int screenNumber = 0;
    xcb_connection_t* connection =
        xcb_connect(display.empty() ? nullptr : display.c_str(), &screenNumber);
    xcb_screen_t* screen =
        xcb_connection_has_error(connection) == 0 ? screenOf(connection, screenNumber) : nullptr;
    if (screen == nullptr) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<Connection>(new Connection(connection, screen, screenNumber));
}

Connection::Connection(xcb_connection_t* connection, xcb_screen_t* screen, int number)
    : connection(connection),
      preferredScreen(screen),
      number(number),
      available(queryExtensions(connection))
{
}

Connection::~Connection()
{
    xcb_disconnect(connection);
}

void Connection::selectEvents(xcb_window_t window, std::uint32_t mask) const
{
    xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace x11
