#include "linux/x11/ForeignPresses.h"

#include "platform/Call.h"

#include <algorithm>
#include <utility>

#include <unistd.h>
#include <xcb/xinput.h>

namespace x11 {

namespace {

/// From the release in a panel until its word of the item must have come. The two come by different
/// ways, so that the word may also be the first.
constexpr std::chrono::duration<double> GRACE{0.25};

using PointerReply = Reply<xcb_query_pointer_reply_t>;

PointerReply pointerIn(const Connection& connection, xcb_window_t window)
{
    return PointerReply(xcb_query_pointer_reply(
        connection.get(), xcb_query_pointer(connection.get(), window), nullptr
    ));
}

xcb_window_t childUnderPointer(const Connection& connection, xcb_window_t window)
{
    const PointerReply pointer = pointerIn(connection, window);
    return pointer ? pointer->child : XCB_NONE;
}

/// The child of the root window that the window is in, or that it is itself.
xcb_window_t outermost(const Connection& connection, xcb_window_t window)
{
    xcb_window_t outer = XCB_NONE;
    for (xcb_window_t each = window; each != XCB_NONE && each != connection.root();) {
        outer = each;
        const Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), each), nullptr)
        );
        each = tree ? tree->parent : XCB_NONE;
    }
    return outer;
}

} // namespace

ForeignPresses::ForeignPresses(X11Desktop& desktop, const X11Guard& guard, platform::Timers& timers)
    : desktop(desktop),
      guard(guard),
      timers(timers),
      inspector(desktop),
      subscription(desktop.subscribe([this](const xcb_generic_event_t& event) { handle(event); }))
{
}

void ForeignPresses::watch(bool wanted)
{
    const Connection& connection = desktop.connection();
    if (std::exchange(watching, wanted) == wanted || !connection.extensions().xinput) {
        return;
    }

    struct
    {
        xcb_input_event_mask_t head{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        std::uint32_t events = 0;
    } selection;

    if (wanted) {
        selection.events =
            XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
    }
    const auto asked =
        xcb_input_xi_select_events_checked(connection.get(), connection.root(), 1, &selection.head);
    // What is pressed from here on is heard.
    const Reply<xcb_generic_error_t> error(xcb_request_check(connection.get(), asked));
    held.clear();
}

void ForeignPresses::itemActivated()
{
    held.clear();
    lastActivation = std::chrono::steady_clock::now();
}

void ForeignPresses::handle(const xcb_generic_event_t& event)
{
    const auto& generic = as<xcb_ge_generic_event_t>(event);
    if (!watching || typeOf(event) != XCB_GE_GENERIC ||
        generic.extension != desktop.connection().extensions().xinputOpcode) {
        return;
    }
    if (generic.event_type == XCB_INPUT_RAW_BUTTON_PRESS) {
        pressed(as<xcb_input_raw_button_press_event_t>(event).detail);
    } else if (generic.event_type == XCB_INPUT_RAW_BUTTON_RELEASE) {
        released();
    }
}

void ForeignPresses::pressed(std::uint32_t physicalButton)
{
    const std::uint8_t button = meaningOf(physicalButton);
    const bool wanted = button == XCB_BUTTON_INDEX_1 || button == XCB_BUTTON_INDEX_3;
    const Connection& connection = desktop.connection();
    const PointerReply pointer = pointerIn(connection, connection.root());
    if (!wanted || guard.captured() || !pointer) {
        return;
    }
    constexpr unsigned MODIFIERS = 0xff;
    const Press press{
        button == XCB_BUTTON_INDEX_3, static_cast<std::uint8_t>(pointer->mask & MODIFIERS)};
    switch (targetAt(pointer->child)) {
    case Target::Own:
        break;
    case Target::Panel:
        if (std::chrono::steady_clock::now() - lastActivation > GRACE) {
            held.push_back(press);
        }
        break;
    case Target::Other:
        tell(press);
        break;
    }
}

void ForeignPresses::released()
{
    if (held.empty()) {
        return;
    }
    const auto tellAll = [this] {
        for (const Press& press : std::exchange(held, {})) {
            tell(press);
        }
    };
    timers.scheduleTimer(GRACE.count(), false, lifetime.guard(tellAll));
}

/// A left-handed person's left button is the right one.
std::uint8_t ForeignPresses::meaningOf(std::uint32_t physicalButton) const
{
    xcb_connection_t* connection = desktop.connection().get();
    const Reply<xcb_get_pointer_mapping_reply_t> mapping(
        xcb_get_pointer_mapping_reply(connection, xcb_get_pointer_mapping(connection), nullptr)
    );
    const bool known = mapping && physicalButton >= 1 && physicalButton <= mapping->map_len;
    return known ? xcb_get_pointer_mapping_map(mapping.get())[physicalButton - 1] : 0;
}

/// The raw event does not say where it went; the pointer is still there.
ForeignPresses::Target ForeignPresses::targetAt(xcb_window_t topLevel) const
{
    Target target = Target::Other;
    const Connection& connection = desktop.connection();
    for (xcb_window_t window = topLevel; window != XCB_NONE;
         window = childUnderPointer(connection, window)) {
        if (inspector.processOf(window) == getpid()) {
            return Target::Own; // also in a tray's window
        }
        if (isPanel(window)) {
            target = Target::Panel;
        }
    }
    return target == Target::Other && framesOwnWindow(topLevel) ? Target::Own : target;
}

bool ForeignPresses::framesOwnWindow(xcb_window_t topLevel) const
{
    const xcb_window_t root = desktop.connection().root();
    const auto managed = inspector.identifiers(root, desktop.atoms().clientList, XCB_ATOM_WINDOW);
    return std::any_of(managed.begin(), managed.end(), [&](xcb_window_t window) {
        return inspector.processOf(window) == getpid() &&
               outermost(desktop.connection(), window) == topLevel;
    });
}

bool ForeignPresses::isPanel(xcb_window_t window) const
{
    const Atoms& atoms = desktop.atoms();
    const auto types = inspector.identifiers(window, atoms.windowType, XCB_ATOM_ATOM);
    return std::find(types.begin(), types.end(), atoms.typeDock) != types.end();
}

void ForeignPresses::tell(const Press& press) const
{
    platform::call(onPress, press);
}

} // namespace x11
