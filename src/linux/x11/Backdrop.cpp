#include "linux/x11/Backdrop.h"

#include "linux/x11/PlainWindowRequest.h"

#include <algorithm>
#include <array>
#include <string>

namespace x11 {

namespace {

xcb_atom_t compositorSelection(const Connection& connection)
{
    const std::string name = "_NET_WM_CM_S" + std::to_string(connection.screenNumber());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection.get(),
        xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr
    ));
    return reply ? reply->atom : XCB_NONE;
}

std::uint16_t twice(std::uint16_t length)
{
    constexpr int LONGEST = 32767;
    return static_cast<std::uint16_t>(std::min(2 * length, LONGEST));
}

} // namespace

Backdrop::Backdrop(const Connection& connection)
    : connection(connection),
      compositor(compositorSelection(connection)),
      id(xcb_generate_id(connection.get())),
      size(sizeToCover())
{
    requestPlainWindow(connection, id, {0, 0, size.width, size.height}, COLOR);
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

void Backdrop::hide()
{
    xcb_unmap_window(connection.get(), id);
    fitDesktop(); // for the next time, when there is no time to ask
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

bool Backdrop::isComposited() const
{
    const Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        connection.get(), xcb_get_selection_owner(connection.get(), compositor), nullptr
    ));
    return owner && owner->owner != XCB_NONE;
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
    return isComposited() ? known : Size{twice(known.width), twice(known.height)};
}

} // namespace x11
