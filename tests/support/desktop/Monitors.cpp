#include "desktop/Monitors.h"

#include "desktop/Failure.h"

#include <algorithm>
#include <array>
#include <string>

#include <sys/uio.h>
#include <xcb/randr.h>
#include <xcb/xcbext.h>

namespace desktop {

namespace {

using Resources = Reply<xcb_randr_get_screen_resources_current_reply_t>;

/// No other client's request comes between while it lives.
class ServerGrab
{
public:
    explicit ServerGrab(XConnection& connection) : connection(connection)
    {
        xcb_grab_server(connection.get());
    }

    ~ServerGrab()
    {
        xcb_ungrab_server(connection.get());
        connection.sync();
    }

    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;
    ServerGrab(ServerGrab&&) = delete;
    ServerGrab& operator=(ServerGrab&&) = delete;

private:
    XConnection& connection;
};

Resources resourcesOf(XConnection& connection)
{
    Resources resources(xcb_randr_get_screen_resources_current_reply(
        connection.get(),
        xcb_randr_get_screen_resources_current(connection.get(), connection.root()),
        nullptr
    ));
    if (!resources || resources->num_outputs == 0 || resources->num_crtcs == 0) {
        throw Failure("the X server has no output to arrange");
    }
    return resources;
}

Rectangle around(const std::vector<Rectangle>& screens)
{
    Rectangle whole;
    for (const Rectangle& screen : screens) {
        whole.width = std::max(whole.width, static_cast<std::uint16_t>(screen.x + screen.width));
        whole.height = std::max(whole.height, static_cast<std::uint16_t>(screen.y + screen.height));
    }
    return whole;
}

xcb_randr_mode_t modeOf(XConnection& connection, const Resources& resources, Rectangle size)
{
    const xcb_randr_mode_info_t* modes =
        xcb_randr_get_screen_resources_current_modes(resources.get());
    for (int index = 0; index < resources->num_modes; ++index) {
        if (modes[index].width == size.width && modes[index].height == size.height) {
            return modes[index].id;
        }
    }
    const std::string name = std::to_string(size.width) + "x" + std::to_string(size.height);
    xcb_randr_mode_info_t wanted{};
    wanted.width = size.width;
    wanted.height = size.height;
    wanted.name_len = static_cast<std::uint16_t>(name.size());
    const auto cookie = xcb_randr_create_mode(
        connection.get(),
        connection.root(),
        wanted,
        static_cast<std::uint32_t>(name.size()),
        name.c_str()
    );
    const Reply<xcb_randr_create_mode_reply_t> made(
        xcb_randr_create_mode_reply(connection.get(), cookie, nullptr)
    );
    if (!made) {
        throw Failure("the X server takes no mode of " + name);
    }
    xcb_randr_add_output_mode(
        connection.get(),
        xcb_randr_get_screen_resources_current_outputs(resources.get())[0],
        made->mode
    );
    return made->mode;
}

void setMode(XConnection& connection, const Resources& resources, xcb_randr_mode_t mode)
{
    const bool off = mode == XCB_NONE;
    const auto cookie = xcb_randr_set_crtc_config(
        connection.get(),
        xcb_randr_get_screen_resources_current_crtcs(resources.get())[0],
        XCB_CURRENT_TIME,
        XCB_CURRENT_TIME,
        0,
        0,
        mode,
        XCB_RANDR_ROTATION_ROTATE_0,
        off ? 0 : 1,
        off ? nullptr : xcb_randr_get_screen_resources_current_outputs(resources.get())
    );
    const Reply<xcb_randr_set_crtc_config_reply_t> done(
        xcb_randr_set_crtc_config_reply(connection.get(), cookie, nullptr)
    );
    if (!done || done->status != XCB_RANDR_SET_CONFIG_SUCCESS) {
        throw Failure("the X server does not change its mode");
    }
}

void resize(XConnection& connection, const Resources& resources, Rectangle size)
{
    constexpr std::uint32_t DOTS_PER_METRE = 3780; // 96 per inch
    setMode(connection, resources, XCB_NONE);
    const Reply<xcb_generic_error_t> refused(xcb_request_check(
        connection.get(),
        xcb_randr_set_screen_size_checked(
            connection.get(),
            connection.root(),
            size.width,
            size.height,
            size.width * 1000U / DOTS_PER_METRE,
            size.height * 1000U / DOTS_PER_METRE
        )
    ));
    if (refused) {
        throw Failure("the X server does not change its size");
    }
    setMode(connection, resources, modeOf(connection, resources, size));
}

void removeMonitors(XConnection& connection)
{
    const Reply<xcb_randr_get_monitors_reply_t> present(xcb_randr_get_monitors_reply(
        connection.get(), xcb_randr_get_monitors(connection.get(), connection.root(), 0), nullptr
    ));
    if (!present) {
        throw Failure("the X server has no monitors");
    }
    for (auto at = xcb_randr_get_monitors_monitors_iterator(present.get()); at.rem > 0;
         xcb_randr_monitor_info_next(&at)) {
        if (at.data->automatic == 0) {
            xcb_randr_delete_monitor(connection.get(), connection.root(), at.data->name);
        }
    }
}

/// SetMonitor as it goes over the wire: the list of outputs follows the fixed part.
struct SetMonitorRequest
{
    xcb_randr_set_monitor_request_t head;
    xcb_randr_monitor_info_t info;
    xcb_randr_output_t output;
};

/// Sent by hand: xcb_randr_set_monitor of libxcb 1.15 ends the program.
void setMonitor(XConnection& connection, SetMonitorRequest request)
{
    static const xcb_protocol_request_t protocol = {2, &xcb_randr_id, XCB_RANDR_SET_MONITOR, 1};
    const std::size_t unused = request.info.nOutput == 0 ? sizeof request.output : 0;
    std::array<iovec, 4> parts{}; // the library needs two in front for itself
    parts[2].iov_base = &request;
    parts[2].iov_len = sizeof request - unused;
    parts[3].iov_len = 0;
    const xcb_void_cookie_t cookie{
        xcb_send_request(connection.get(), XCB_REQUEST_CHECKED, &parts[2], &protocol)};
    const Reply<xcb_generic_error_t> refused(xcb_request_check(connection.get(), cookie));
    if (refused) {
        throw Failure("the X server takes no such monitor");
    }
}

/// The output belongs to the first screen; the others are plain areas.
void addMonitor(
    XConnection& connection,
    const Rectangle& screen,
    const std::string& name,
    const xcb_randr_output_t* output
)
{
    SetMonitorRequest request{};
    request.head.window = connection.root();
    request.info.name = connection.atom(name);
    request.info.primary = output != nullptr ? 1 : 0;
    request.info.nOutput = output != nullptr ? 1 : 0;
    request.info.x = screen.x;
    request.info.y = screen.y;
    request.info.width = screen.width;
    request.info.height = screen.height;
    request.info.width_in_millimeters = screen.width / 4U;
    request.info.height_in_millimeters = screen.height / 4U;
    request.output = output != nullptr ? *output : 0;
    setMonitor(connection, request);
}

} // namespace

void arrangeMonitors(XConnection& connection, const std::vector<Rectangle>& screens)
{
    const ServerGrab grab(connection);
    removeMonitors(connection);
    Resources resources = resourcesOf(connection);
    resize(connection, resources, around(screens));
    resources = resourcesOf(connection);
    const xcb_randr_output_t* output =
        xcb_randr_get_screen_resources_current_outputs(resources.get());
    int number = 0;
    for (const Rectangle& screen : screens) {
        addMonitor(connection, screen, "TEST-" + std::to_string(number), output);
        output = nullptr;
        ++number;
    }
}

} // namespace desktop
