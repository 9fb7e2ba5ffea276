#include "linux/tray/TraySelection.h"

#include "platform/Call.h"

#include <string>

namespace tray {

namespace {

xcb_atom_t selectionOf(const x11::Connection& connection)
{
    const std::string name = "_NET_SYSTEM_TRAY_S" + std::to_string(connection.screenNumber());
    const x11::Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection.get(),
        xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr
    ));
    return reply ? reply->atom : XCB_NONE;
}

} // namespace

TraySelection::TraySelection(x11::X11Desktop& desktop)
    : desktop(desktop),
      selection(selectionOf(desktop.connection())),
      subscription(desktop.subscribe([this](const xcb_generic_event_t& event) { handle(event); }))
{
    follow();
}

bool TraySelection::isOfChange(const xcb_generic_event_t& event) const
{
    switch (x11::typeOf(event)) {
    case XCB_CLIENT_MESSAGE: {
        const auto& message = x11::as<xcb_client_message_event_t>(event);
        return message.type == desktop.atoms().manager && message.data.data32[1] == selection;
    }
    case XCB_DESTROY_NOTIFY:
        return owner != XCB_NONE && x11::as<xcb_destroy_notify_event_t>(event).window == owner;
    default:
        return false;
    }
}

void TraySelection::handle(const xcb_generic_event_t& event)
{
    if (isOfChange(event)) {
        change();
    }
}

xcb_window_t TraySelection::readOwner() const
{
    xcb_connection_t* connection = desktop.connection().get();
    const x11::Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, selection), nullptr
    ));
    return reply ? reply->owner : XCB_NONE;
}

void TraySelection::follow()
{
    owner = readOwner();
    while (owner != XCB_NONE) {
        desktop.connection().selectEvents(owner, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        const xcb_window_t since = readOwner();
        if (since == owner) {
            break; // its end will be heard
        }
        owner = since;
    }
}

void TraySelection::change()
{
    follow();
    platform::call(onChanged);
}

} // namespace tray
