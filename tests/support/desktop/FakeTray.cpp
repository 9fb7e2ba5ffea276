#include "desktop/FakeTray.h"

#include <array>

namespace desktop {

namespace {

constexpr auto SELECTION = "_NET_SYSTEM_TRAY_S0";
constexpr std::uint8_t WORDS = 32;

xcb_client_message_event_t message(xcb_window_t window, xcb_atom_t type)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = WORDS;
    event.window = window;
    event.type = type;
    return event;
}

void send(
    XConnection& connection,
    xcb_window_t target,
    std::uint32_t mask,
    const xcb_client_message_event_t& event
)
{
    const void* bytes = &event;
    xcb_send_event(connection.get(), 0, target, mask, static_cast<const char*>(bytes));
}

} // namespace

FakeTray::FakeTray(const std::string& displayName, const Options& options)
    : connection(displayName),
      tray(xcb_generate_id(connection.get())),
      width(options.place.width),
      height(options.place.height)
{
    openWindow(options);
    if (options.transparentIcons) {
        offerAlpha();
    }
    announce();
}

xcb_window_t FakeTray::icon()
{
    work();
    return held;
}

int FakeTray::requests()
{
    work();
    return asked;
}

void FakeTray::letGo()
{
    xcb_unmap_window(connection.get(), held);
    xcb_reparent_window(connection.get(), held, connection.root(), 0, 0);
    connection.sync();
}

void FakeTray::resize(std::uint16_t side)
{
    const std::array<std::uint32_t, 2> size{side, side};
    for (const xcb_window_t window : {tray, held}) {
        xcb_configure_window(
            connection.get(),
            window,
            XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
            size.data()
        );
    }
    connection.sync();
}

std::uint8_t FakeTray::depthOfIcon()
{
    const Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection.get(), xcb_get_geometry(connection.get(), held), nullptr)
    );
    return geometry ? geometry->depth : 0;
}

void FakeTray::openWindow(const Options& options)
{
    const std::array<std::uint32_t, 3> values{GROUND, 1, XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(
        connection.get(),
        XCB_COPY_FROM_PARENT,
        tray,
        connection.root(),
        options.place.x,
        options.place.y,
        width,
        height,
        0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT,
        XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
        values.data()
    );
    xcb_map_window(connection.get(), tray);
}

void FakeTray::announce()
{
    const xcb_atom_t selection = connection.atom(SELECTION);
    xcb_set_selection_owner(connection.get(), tray, selection, XCB_CURRENT_TIME);
    auto event = message(connection.root(), connection.atom("MANAGER"));
    event.data.data32[1] = selection;
    event.data.data32[2] = tray;
    send(connection, connection.root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY, event);
    connection.sync();
}

/// Any of the visuals of 32 bits.
void FakeTray::offerAlpha()
{
    auto depths = xcb_screen_allowed_depths_iterator(&connection.screen());
    while (depths.rem > 0 && depths.data->depth != WORDS) {
        xcb_depth_next(&depths);
    }
    if (depths.rem > 0) {
        xcb_change_property(
            connection.get(),
            XCB_PROP_MODE_REPLACE,
            tray,
            connection.atom("_NET_SYSTEM_TRAY_VISUAL"),
            XCB_ATOM_VISUALID,
            WORDS,
            1,
            &xcb_depth_visuals(depths.data)->visual_id
        );
    }
}

void FakeTray::work()
{
    const xcb_atom_t opcode = connection.atom("_NET_SYSTEM_TRAY_OPCODE");
    while (const auto event = Reply<xcb_generic_event_t>(xcb_poll_for_event(connection.get()))) {
        const void* bytes = event.get();
        constexpr unsigned SENT = 0x80;
        const unsigned type = event->response_type & ~SENT;
        if (type == XCB_CLIENT_MESSAGE) {
            const auto& request = *static_cast<const xcb_client_message_event_t*>(bytes);
            if (request.type == opcode) {
                takeIn(request.data.data32[2]);
            }
        } else if (type == XCB_DESTROY_NOTIFY &&
                   static_cast<const xcb_destroy_notify_event_t*>(bytes)->window == held) {
            held = XCB_NONE;
        }
    }
}

void FakeTray::takeIn(xcb_window_t window)
{
    ++asked;
    held = window;
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY; // also when it is put out
    xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &events);
    const std::array<std::uint32_t, 2> size{width, height};
    xcb_reparent_window(connection.get(), window, tray, 0, 0);
    xcb_configure_window(
        connection.get(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data()
    );
    auto embedded = message(window, connection.atom("_XEMBED"));
    embedded.data.data32[3] = tray;
    send(connection, window, XCB_EVENT_MASK_NO_EVENT, embedded);
    xcb_map_window(connection.get(), window);
    connection.sync();
}

} // namespace desktop
