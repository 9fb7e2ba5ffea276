#include "linux/x11/KeyForwarder.h"

#include <cstring> // explicit_bzero

namespace x11 {

namespace {

/// Whole pixels of a coordinate with 16 binary places.
std::int16_t pixels(xcb_input_fp1616_t value)
{
    constexpr int PLACES = 1 << 16;
    return static_cast<std::int16_t>(value / PLACES);
}

/// Modifiers, pointer buttons and keyboard group as core events carry them.
std::uint16_t coreState(
    const xcb_input_modifier_info_t& modifiers,
    const xcb_input_group_info_t& group,
    std::uint32_t buttons
)
{
    constexpr unsigned MODIFIERS = 0xff;
    constexpr unsigned BUTTONS = 0x1f; // the first five
    constexpr unsigned BUTTONS_SHIFT = 8;
    constexpr unsigned GROUPS = 0x3;
    constexpr unsigned GROUPS_SHIFT = 13;
    return static_cast<std::uint16_t>(
        (modifiers.effective & MODIFIERS) | ((buttons & BUTTONS) << BUTTONS_SHIFT) |
        ((group.effective & GROUPS) << GROUPS_SHIFT)
    );
}

/// Buttons that are down, the first one in the lowest bit.
std::uint32_t buttonsDown(const xcb_input_button_press_event_t& event)
{
    const std::uint32_t* words = xcb_input_button_press_button_mask(&event);
    return event.buttons_len == 0 ? 0U : words[0] >> 1U; // bit 0 stands for no button
}

} // namespace

KeyForwarder::KeyForwarder(const Connection& connection) : connection(connection)
{
    waiting.reserve(LARGEST_QUEUE); // never moved, so that no copy of it stays behind
}

KeyForwarder::~KeyForwarder()
{
    forgetQueue();
}

void KeyForwarder::setTarget(xcb_window_t window)
{
    target = window;
    if (target == XCB_NONE || waiting.empty()) {
        return;
    }
    for (const xcb_key_press_event_t& event : waiting) {
        send(event);
    }
    forgetQueue();
    connection.flush();
}

void KeyForwarder::key(const xcb_input_key_press_event_t& event)
{
    if (event.detail >= pressed.size()) {
        return; // core events have no room for such a key
    }
    const bool press = event.event_type == XCB_INPUT_KEY_PRESS;
    const bool repeat = (event.flags & XCB_INPUT_KEY_EVENT_FLAGS_KEY_REPEAT) != 0;
    if ((repeat || !press) && !pressed[event.detail]) {
        return;
    }
    pressed[event.detail] = press;

    xcb_key_press_event_t core{};
    core.detail = static_cast<xcb_keycode_t>(event.detail);
    core.time = event.time;
    core.root = event.root;
    core.root_x = pixels(event.root_x);
    core.root_y = pixels(event.root_y);
    core.event_x = core.root_x;
    core.event_y = core.root_y;
    core.state = coreState(event.mods, event.group, 0);
    core.same_screen = 1;
    if (repeat) { // a repeat looks like a release and a press at the same time
        core.response_type = XCB_KEY_RELEASE;
        forward(core);
    }
    core.response_type = press ? XCB_KEY_PRESS : XCB_KEY_RELEASE;
    forward(core);
    connection.flush();
}

void KeyForwarder::button(const xcb_input_button_press_event_t& event) const
{
    constexpr std::uint32_t LAST_CLICKABLE = XCB_BUTTON_INDEX_3; // above it is the wheel
    if (target == XCB_NONE || event.detail > LAST_CLICKABLE) {
        return;
    }
    const Reply<xcb_get_geometry_reply_t> frame(xcb_get_geometry_reply(
        connection.get(), xcb_get_geometry(connection.get(), target), nullptr
    ));
    const int x = pixels(event.root_x) - (frame ? frame->x : 0);
    const int y = pixels(event.root_y) - (frame ? frame->y : 0);
    if (!frame || x < 0 || y < 0 || x >= frame->width || y >= frame->height) {
        return;
    }
    xcb_button_press_event_t core{};
    core.response_type =
        event.event_type == XCB_INPUT_BUTTON_PRESS ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE;
    core.detail = static_cast<xcb_button_t>(event.detail);
    core.time = event.time;
    core.root = event.root;
    core.event = target;
    core.root_x = pixels(event.root_x);
    core.root_y = pixels(event.root_y);
    core.event_x = static_cast<std::int16_t>(x);
    core.event_y = static_cast<std::int16_t>(y);
    core.state = coreState(event.mods, event.group, buttonsDown(event));
    core.same_screen = 1;
    xcb_send_event(
        connection.get(),
        0,
        target,
        XCB_EVENT_MASK_NO_EVENT,
        static_cast<const char*>(static_cast<const void*>(&core))
    );
    connection.flush();
}

void KeyForwarder::reset()
{
    forgetQueue();
    pressed.reset();
}

void KeyForwarder::forward(xcb_key_press_event_t event)
{
    if (target != XCB_NONE) {
        send(event);
    } else if (waiting.size() < LARGEST_QUEUE) {
        waiting.push_back(event);
    }
    explicit_bzero(&event, sizeof event);
}

void KeyForwarder::send(const xcb_key_press_event_t& event) const
{
    xcb_key_press_event_t addressed = event;
    addressed.event = target;
    // No event mask: the event goes to the program that made the window, and to nobody else.
    xcb_send_event(
        connection.get(),
        0,
        target,
        XCB_EVENT_MASK_NO_EVENT,
        static_cast<const char*>(static_cast<const void*>(&addressed))
    );
    explicit_bzero(&addressed, sizeof addressed);
}

void KeyForwarder::forgetQueue()
{
    explicit_bzero(waiting.data(), waiting.size() * sizeof(xcb_key_press_event_t));
    waiting.clear();
}

} // namespace x11
