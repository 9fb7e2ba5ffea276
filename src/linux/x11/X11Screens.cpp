#include "linux/x11/X11Screens.h"

#include "platform/Call.h"

#include <algorithm>
#include <utility>

#include <xcb/randr.h>

namespace x11 {

X11Screens::X11Screens(X11Desktop& desktop)
    : desktop(desktop),
      subscription(desktop.subscribe([this](const xcb_generic_event_t& event) { handle(event); }))
{
    const Connection& connection = desktop.connection();
    if (connection.extensions().randr) {
        xcb_randr_select_input(
            connection.get(),
            connection.root(),
            XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE
        );
        connection.flush();
    }
    latest = monitors();
}

std::optional<std::vector<platform::Screen>> X11Screens::screens()
{
    const auto found = monitors();
    if (!found.has_value()) {
        return std::nullopt;
    }
    std::vector<platform::Screen> screens;
    screens.reserve(found->size());
    for (const Monitor& monitor : *found) {
        screens.push_back(monitor.screen);
    }
    return screens;
}

std::optional<platform::Screen> X11Screens::mainScreen()
{
    const auto found = monitors();
    if (!found.has_value()) {
        return std::nullopt;
    }
    const auto primary = std::find_if(found->begin(), found->end(), [](const Monitor& monitor) {
        return monitor.primary;
    });
    return primary == found->end() ? found->front().screen : primary->screen;
}

void X11Screens::observe(std::function<void()> newHandler)
{
    handler = std::move(newHandler);
}

/// Monitors that are set by hand are told of by the root window's ConfigureNotify alone.
bool X11Screens::mayChangeScreens(const xcb_generic_event_t& event) const
{
    const Connection& connection = desktop.connection();
    if (typeOf(event) == XCB_CONFIGURE_NOTIFY) {
        return as<xcb_configure_notify_event_t>(event).window == connection.root();
    }
    return connection.extensions().isRandrEvent(typeOf(event));
}

/// One change of the arrangement is several events.
void X11Screens::handle(const xcb_generic_event_t& event)
{
    if (!mayChangeScreens(event)) {
        return;
    }
    std::optional<std::vector<Monitor>> now = monitors();
    const bool changed = now != latest;
    latest = std::move(now);
    if (changed) {
        platform::call(handler);
    }
}

/// Never an empty list.
std::optional<std::vector<X11Screens::Monitor>> X11Screens::monitors() const
{
    std::vector<Monitor> found = randrMonitors();
    if (found.empty()) {
        const std::optional<Monitor> whole = wholeDesktop();
        if (!whole.has_value()) {
            return std::nullopt;
        }
        found.push_back(*whole);
    }
    return found;
}

std::vector<X11Screens::Monitor> X11Screens::randrMonitors() const
{
    const Connection& connection = desktop.connection();
    if (!connection.extensions().randr) {
        return {};
    }
    const Reply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
        connection.get(), xcb_randr_get_monitors(connection.get(), connection.root(), 1), nullptr
    ));
    std::vector<Monitor> found;
    if (!reply) {
        return found;
    }
    auto monitors = xcb_randr_get_monitors_monitors_iterator(reply.get());
    for (; monitors.rem > 0; xcb_randr_monitor_info_next(&monitors)) {
        const xcb_randr_monitor_info_t& info = *monitors.data;
        if (info.width != 0 && info.height != 0) {
            found.push_back(
                {{nameOf(info.name), {info.x, info.y, info.width, info.height}}, info.primary != 0}
            );
        }
    }
    return found;
}

std::optional<X11Screens::Monitor> X11Screens::wholeDesktop() const
{
    const Connection& connection = desktop.connection();
    const Reply<xcb_get_geometry_reply_t> root(xcb_get_geometry_reply(
        connection.get(), xcb_get_geometry(connection.get(), connection.root()), nullptr
    ));
    if (!root) {
        return std::nullopt;
    }
    return Monitor{{"desktop", {0, 0, root->width, root->height}}, true};
}

std::string X11Screens::nameOf(xcb_atom_t atom) const
{
    const Connection& connection = desktop.connection();
    const Reply<xcb_get_atom_name_reply_t> reply(xcb_get_atom_name_reply(
        connection.get(), xcb_get_atom_name(connection.get(), atom), nullptr
    ));
    if (!reply) {
        return {};
    }
    return {
        xcb_get_atom_name_name(reply.get()),
        static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

} // namespace x11
