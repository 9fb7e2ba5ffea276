#include "linux/x11/PlainWindowRequest.h"

#include "linux/session/Programs.h"
#include "linux/x11/Pixel.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace x11 {

void requestPlainWindow(
    const Connection& connection,
    xcb_window_t id,
    const platform::Rect& frame,
    const platform::Color& color
)
{
    // A background pixel is what makes the server itself paint the window as it comes up.
    constexpr std::uint32_t MASK = XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT;
    const std::array<std::uint32_t, 2> values{pixelOf(connection, color), 1U};
    xcb_create_window(
        connection.get(),
        XCB_COPY_FROM_PARENT,
        id,
        connection.root(),
        static_cast<std::int16_t>(frame.x),
        static_cast<std::int16_t>(frame.y),
        static_cast<std::uint16_t>(std::max(frame.width, 1)),
        static_cast<std::uint16_t>(std::max(frame.height, 1)),
        0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT,
        MASK,
        values.data()
    );
    constexpr std::string_view NAME = session::AGENT;
    xcb_change_property(
        connection.get(),
        XCB_PROP_MODE_REPLACE,
        id,
        XCB_ATOM_WM_NAME,
        XCB_ATOM_STRING,
        8,
        static_cast<std::uint32_t>(NAME.size()),
        NAME.data()
    );
}

} // namespace x11
