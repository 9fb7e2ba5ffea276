#include "desktop/ForeignClient.h"

#include <array>

namespace desktop {

xcb_window_t createForeignWindow(XConnection& connection, const Rectangle& place, Pixel colour)
{
    const xcb_window_t window = xcb_generate_id(connection.get());
    const std::array<std::uint32_t, 2> values{colour, 1};
    xcb_create_window(
        connection.get(),
        XCB_COPY_FROM_PARENT,
        window,
        connection.root(),
        place.x,
        place.y,
        place.width,
        place.height,
        0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT,
        XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
        values.data()
    );
    return window;
}

xcb_window_t showForeignWindow(XConnection& connection, const Rectangle& place, Pixel colour)
{
    const xcb_window_t window = createForeignWindow(connection, place, colour);
    xcb_map_window(connection.get(), window);
    connection.sync();
    return window;
}

bool grabInput(XConnection& connection)
{
    const Reply<xcb_grab_keyboard_reply_t> keyboard(xcb_grab_keyboard_reply(
        connection.get(),
        xcb_grab_keyboard(
            connection.get(),
            0,
            connection.root(),
            XCB_CURRENT_TIME,
            XCB_GRAB_MODE_ASYNC,
            XCB_GRAB_MODE_ASYNC
        ),
        nullptr
    ));
    const Reply<xcb_grab_pointer_reply_t> pointer(xcb_grab_pointer_reply(
        connection.get(),
        xcb_grab_pointer(
            connection.get(),
            0,
            connection.root(),
            XCB_EVENT_MASK_BUTTON_PRESS,
            XCB_GRAB_MODE_ASYNC,
            XCB_GRAB_MODE_ASYNC,
            XCB_NONE,
            XCB_NONE,
            XCB_CURRENT_TIME
        ),
        nullptr
    ));
    return keyboard && keyboard->status == XCB_GRAB_STATUS_SUCCESS && pointer &&
           pointer->status == XCB_GRAB_STATUS_SUCCESS;
}

void releaseInput(XConnection& connection)
{
    xcb_ungrab_keyboard(connection.get(), XCB_CURRENT_TIME);
    xcb_ungrab_pointer(connection.get(), XCB_CURRENT_TIME);
    connection.sync();
}

} // namespace desktop
