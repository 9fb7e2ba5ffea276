// The fastest application there can be: one window, at once, without any toolkit.

#include <array>
#include <cstdint>
#include <cstdlib>

#include <xcb/xcb.h>

int main()
{
    constexpr std::uint32_t GLARING = 0xFF00FF;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        return 1;
    }
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const xcb_window_t window = xcb_generate_id(connection);
    const std::array<std::uint32_t, 1> values = {GLARING};
    xcb_create_window(
        connection,
        XCB_COPY_FROM_PARENT,
        window,
        screen->root,
        0,
        0,
        600,
        400,
        0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT,
        XCB_CW_BACK_PIXEL,
        values.data()
    );
    xcb_map_window(connection, window);
    xcb_flush(connection);
    while (xcb_generic_event_t* event = xcb_wait_for_event(connection)) {
        std::free(event);
    }
    xcb_disconnect(connection);
    return 0;
}
