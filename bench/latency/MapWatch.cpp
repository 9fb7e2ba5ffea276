#include "latency/MapWatch.h"

namespace latency {

namespace {

constexpr std::uint8_t SENT_BIT = 0x80;

void select(desktop::XConnection& connection, xcb_window_t window, std::uint32_t events)
{
    xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection.get());
}

} // namespace

MapWatch::MapWatch(const std::string& displayName) : connection(displayName)
{
    select(connection, connection.root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    connection.sync();
}

std::optional<desktop::Clock::time_point> MapWatch::look()
{
    while (const desktop::Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection.get())}) {
        handle(*event);
    }
    return mapped;
}

void MapWatch::reset()
{
    look();
    mapped.reset();
}

void MapWatch::handle(const xcb_generic_event_t& event)
{
    const void* bytes = &event;
    const int type = event.response_type & ~SENT_BIT;
    if (type == XCB_CREATE_NOTIFY) {
        const auto& created = *static_cast<const xcb_create_notify_event_t*>(bytes);
        if (created.override_redirect == 0) {
            select(connection, created.window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        }
    } else if (type == XCB_MAP_NOTIFY) {
        const auto& shown = *static_cast<const xcb_map_notify_event_t*>(bytes);
        const bool own = shown.event == shown.window && shown.override_redirect == 0;
        if (own && !mapped.has_value()) {
            mapped = desktop::Clock::now();
        }
    }
}

} // namespace latency
