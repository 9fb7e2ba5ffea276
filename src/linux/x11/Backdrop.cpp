#include "linux/x11/Backdrop.h"

#include "linux/x11/PlainWindowRequest.h"
#include "platform/Windows.h"

#include <algorithm>
#include <array>

namespace x11 {

namespace {

std::uint16_t twice(std::uint16_t length)
{
    constexpr int LONGEST = 32767;
    return static_cast<std::uint16_t>(std::min(2 * length, LONGEST));
}

} // namespace

Backdrop::Backdrop(const Connection& connection)
    : connection(connection),
      compositor(connection),
      id(xcb_generate_id(connection.get())),
      size(sizeToCover())
{
    requestPlainWindow(connection, id, {0, 0, size.width, size.height}, platform::LOCK_COLOR);
    connection.flush();
}

Backdrop::~Backdrop()
{
    xcb_destroy_window(connection.get(), id);
    connection.flush();
}

void Backdrop::show() const
{
    xcb_map_window(connection.get(), id);
}

void Backdrop::hide() const
{
    xcb_unmap_window(connection.get(), id);
}

void Backdrop::fitDesktop()
{
    const Size wanted = sizeToCover();
    if (wanted == size) {
        return;
    }
    size = wanted;
    const std::array<std::uint32_t, 2> values{size.width, size.height};
    xcb_configure_window(
        connection.get(), id, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values.data()
    );
    connection.flush();
}

Backdrop::Size Backdrop::sizeToCover() const
{
    const Reply<xcb_get_geometry_reply_t> desktop(xcb_get_geometry_reply(
        connection.get(), xcb_get_geometry(connection.get(), connection.root()), nullptr
    ));
    const Size known =
        desktop ? Size{desktop->width, desktop->height}
                : Size{connection.screen().width_in_pixels, connection.screen().height_in_pixels};
    // A compositor keeps a picture of the whole window, however much of it is seen.
    return compositor.isRunning() ? known : Size{twice(known.width), twice(known.height)};
}

} // namespace x11
