#include "linux/tray/TrayWindow.h"

#include "linux/statusbar/StatusArea.h"
#include "linux/tray/Composition.h"
#include "linux/x11/WindowInspector.h"
#include "platform/Call.h"

#include <array>
#include <string>
#include <string_view>

#include <unistd.h>

namespace tray {

namespace {

constexpr std::uint32_t EVENTS = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_STRUCTURE_NOTIFY |
                                 XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_ENTER_WINDOW |
                                 XCB_EVENT_MASK_LEAVE_WINDOW | XCB_EVENT_MASK_POINTER_MOTION;
constexpr std::string_view WM_CLASS{"tarvel\0Tarvel\0", 14};

/// What the tray wants of its icons; XCB_NONE where it does not say.
xcb_visualid_t visualOf(const x11::X11Desktop& desktop, xcb_window_t manager)
{
    const x11::WindowInspector inspector(desktop);
    const auto visuals =
        inspector.identifiers(manager, desktop.atoms().trayVisual, XCB_ATOM_VISUALID);
    return visuals.empty() ? XCB_NONE : visuals.front();
}

} // namespace

TrayWindow::TrayWindow(x11::X11Desktop& desktop, xcb_window_t manager)
    : desktop(desktop),
      window(xcb_generate_id(desktop.connection().get())),
      extent(statusbar::THICKNESS, statusbar::THICKNESS),
      subscription(desktop.subscribe([this](const xcb_generic_event_t& event) { handle(event); }))
{
    create(visualOf(desktop, manager));
    askForDocking(manager);
}

TrayWindow::~TrayWindow()
{
    xcb_connection_t* connection = desktop.connection().get();
    xcb_destroy_window(connection, window); // an error that nobody hears where it is gone already
    if (colormap != XCB_NONE) {
        xcb_free_colormap(connection, colormap);
    }
    xcb_flush(connection);
}

std::optional<platform::Rect> TrayWindow::frame() const
{
    if (!docked) {
        return std::nullopt;
    }
    xcb_connection_t* connection = desktop.connection().get();
    const auto geometryAsked = xcb_get_geometry(connection, window);
    const auto placeAsked =
        xcb_translate_coordinates(connection, window, desktop.connection().root(), 0, 0);
    const x11::Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection, geometryAsked, nullptr)
    );
    const x11::Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection, placeAsked, nullptr)
    );
    if (!geometry || !place) {
        return std::nullopt;
    }
    return platform::Rect{place->dst_x, place->dst_y, geometry->width, geometry->height};
}

void TrayWindow::setTitle(const QString& title)
{
    constexpr std::uint8_t BYTES = 8;
    const std::string text = title.toStdString();
    const x11::Atoms& atoms = desktop.atoms();
    const auto set = [&](xcb_atom_t property) {
        xcb_change_property(
            desktop.connection().get(),
            XCB_PROP_MODE_REPLACE,
            window,
            property,
            atoms.utf8String,
            BYTES,
            static_cast<std::uint32_t>(text.size()),
            text.data()
        );
    };
    set(atoms.netWmName);
    set(XCB_ATOM_WM_NAME);
    desktop.connection().flush();
}

void TrayWindow::paint(const QImage& picture)
{
    compose(desktop.connection(), {window, visual}, picture);
}

void TrayWindow::create(xcb_visualid_t trayVisual)
{
    const x11::Connection& connection = desktop.connection();
    const bool transparent = hasAlpha(connection, trayVisual);
    visual = transparent ? trayVisual : connection.screen().root_visual;
    std::uint32_t mask = XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK;
    xcb_create_window_value_list_t values{};
    values.event_mask = EVENTS;
    if (transparent) {
        colormap = xcb_generate_id(connection.get());
        xcb_create_colormap(
            connection.get(), XCB_COLORMAP_ALLOC_NONE, colormap, connection.root(), visual
        );
        values.colormap = colormap;
        mask |= XCB_CW_BACK_PIXEL | XCB_CW_COLORMAP;
    } else {
        values.background_pixmap = XCB_BACK_PIXMAP_PARENT_RELATIVE;
        mask |= XCB_CW_BACK_PIXMAP;
    }
    xcb_create_window_aux(
        connection.get(),
        transparent ? ALPHA_DEPTH : connection.screen().root_depth,
        window,
        connection.root(),
        0,
        0,
        static_cast<std::uint16_t>(extent.width()),
        static_cast<std::uint16_t>(extent.height()),
        0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT,
        visual,
        mask,
        &values
    );
}

void TrayWindow::askForDocking(xcb_window_t manager) const
{
    const x11::Connection& connection = desktop.connection();
    const x11::Atoms& atoms = desktop.atoms();
    const auto set = [&](xcb_atom_t name, xcb_atom_t type, std::uint8_t format, auto& value) {
        constexpr unsigned BITS = 8;
        const auto count = static_cast<std::uint32_t>(value.size() * sizeof(value[0]) * BITS);
        xcb_change_property(
            connection.get(),
            XCB_PROP_MODE_REPLACE,
            window,
            name,
            type,
            format,
            count / format,
            value.data()
        );
    };
    constexpr std::uint32_t VERSION = 0;
    constexpr std::uint32_t TO_BE_MAPPED = 1;
    constexpr std::uint8_t WORDS = 32;
    constexpr std::uint8_t BYTES = 8;
    const std::array embedding{VERSION, TO_BE_MAPPED};
    const std::array process{static_cast<std::uint32_t>(getpid())};
    set(atoms.xembedInfo, atoms.xembedInfo, WORDS, embedding);
    set(atoms.wmPid, XCB_ATOM_CARDINAL, WORDS, process);
    set(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, BYTES, WM_CLASS);

    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = WORDS;
    request.window = manager;
    request.type = atoms.trayOpcode;
    // After the current time and the number of this request, both 0.
    request.data.data32[2] = window;
    const void* bytes = &request;
    xcb_send_event(
        connection.get(), 0, manager, XCB_EVENT_MASK_NO_EVENT, static_cast<const char*>(bytes)
    );
    connection.flush();
}

void TrayWindow::handle(const xcb_generic_event_t& event)
{
    switch (x11::typeOf(event)) {
    case XCB_EXPOSE:
        handleExpose(x11::as<xcb_expose_event_t>(event));
        break;
    case XCB_BUTTON_PRESS:
        handlePress(x11::as<xcb_button_press_event_t>(event));
        break;
    case XCB_ENTER_NOTIFY:
    case XCB_LEAVE_NOTIFY:
    case XCB_MOTION_NOTIFY:
        handlePointer(event);
        break;
    case XCB_CONFIGURE_NOTIFY:
        handleConfigure(x11::as<xcb_configure_notify_event_t>(event));
        break;
    case XCB_REPARENT_NOTIFY:
        handleReparent(x11::as<xcb_reparent_notify_event_t>(event));
        break;
    case XCB_DESTROY_NOTIFY:
        if (x11::as<xcb_destroy_notify_event_t>(event).window == window) {
            letGo();
        }
        break;
    default:
        break;
    }
}

void TrayWindow::handleConfigure(const xcb_configure_notify_event_t& event)
{
    if (event.window == window) {
        extent = QSize(event.width, event.height); // an exposure follows
    }
}

void TrayWindow::handleExpose(const xcb_expose_event_t& event) const
{
    if (event.window == window && event.count == 0) {
        platform::call(onExposed);
    }
}

void TrayWindow::handlePress(const xcb_button_press_event_t& event) const
{
    if (event.event != window) {
        return;
    }
    // The press holds the pointer for this connection until the release; menus are another's.
    xcb_connection_t* connection = desktop.connection().get();
    const auto asked = xcb_ungrab_pointer_checked(connection, XCB_CURRENT_TIME);
    const x11::Reply<xcb_generic_error_t> error(xcb_request_check(connection, asked));
    platform::call(onPressed, event.detail, event.root_x, event.root_y);
}

void TrayWindow::handlePointer(const xcb_generic_event_t& event) const
{
    const auto& place = x11::as<xcb_motion_notify_event_t>(event); // all three begin like this one
    if (place.event != window) {
        return;
    }
    if (x11::typeOf(event) == XCB_LEAVE_NOTIFY) {
        platform::call(onPointerLeft); // also when another window takes hold of the pointer
    } else {
        platform::call(onPointerMoved, place.root_x, place.root_y);
    }
}

void TrayWindow::handleReparent(const xcb_reparent_notify_event_t& event)
{
    if (event.window != window) {
        return;
    }
    docked = event.parent != desktop.connection().root();
    if (!docked) {
        letGo();
    }
}

void TrayWindow::letGo() const
{
    platform::call(onLetGo);
}

} // namespace tray
