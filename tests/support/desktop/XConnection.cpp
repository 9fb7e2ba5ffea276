#include "desktop/XConnection.h"

#include "desktop/Failure.h"

namespace desktop {

namespace {

constexpr std::uint32_t LONGEST_PROPERTY = 65536; // in units of four bytes

} // namespace

XConnection::XConnection(const std::string& displayName)
    : connection(xcb_connect(displayName.c_str(), nullptr))
{
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        throw Failure("no X server at " + displayName);
    }
    firstScreen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
}

XConnection::~XConnection()
{
    xcb_disconnect(connection);
}

xcb_atom_t XConnection::atom(const std::string& name)
{
    const auto cookie =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<std::uint32_t> XConnection::property(xcb_window_t window, const std::string& name)
{
    const auto cookie =
        xcb_get_property(connection, 0, window, atom(name), XCB_ATOM_ANY, 0, LONGEST_PROPERTY);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr)
    );
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {values, values + reply->value_len};
}

std::string XConnection::textProperty(xcb_window_t window, const std::string& name)
{
    const auto cookie =
        xcb_get_property(connection, 0, window, atom(name), XCB_ATOM_ANY, 0, LONGEST_PROPERTY);
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr)
    );
    if (!reply || reply->format != 8) {
        return {};
    }
    const auto* text = static_cast<const char*>(xcb_get_property_value(reply.get()));
    return {text, reply->value_len};
}

void XConnection::sync()
{
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr)
    );
}

} // namespace desktop
