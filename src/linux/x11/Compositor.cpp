#include "linux/x11/Compositor.h"

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

} // namespace

Compositor::Compositor(const Connection& connection)
    : connection(connection),
      selection(compositorSelection(connection))
{
}

bool Compositor::isRunning() const
{
    const Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        connection.get(), xcb_get_selection_owner(connection.get(), selection), nullptr
    ));
    return owner && owner->owner != XCB_NONE;
}

} // namespace x11
