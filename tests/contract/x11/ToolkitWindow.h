// A window as a toolkit makes it for a lock, on a connection of its own, and the core key and
// button events that it is given.
#pragma once

#include "desktop/XConnection.h"
#include "platform/Geometry.h"

#include <array>
#include <string>
#include <vector>

#include <xcb/xcb.h>

class ToolkitWindow
{
public:
    ToolkitWindow(const std::string& display, const platform::Rect& frame) : connection(display)
    {
        const std::array<std::uint32_t, 2> values{1, 0};
        xcb_create_window(
            connection.get(),
            XCB_COPY_FROM_PARENT,
            window,
            connection.root(),
            static_cast<std::int16_t>(frame.x),
            static_cast<std::int16_t>(frame.y),
            static_cast<std::uint16_t>(frame.width),
            static_cast<std::uint16_t>(frame.height),
            0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT,
            XCB_COPY_FROM_PARENT,
            XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK,
            values.data()
        );
        connection.sync();
    }

    void show()
    {
        xcb_map_window(connection.get(), window);
        connection.sync();
    }

    void hide()
    {
        xcb_unmap_window(connection.get(), window);
        connection.sync();
    }

    xcb_window_t id() const { return window; }

    desktop::XConnection& display() { return connection; }

    /// Every key event and button event so far, oldest first.
    const std::vector<xcb_key_press_event_t>& events()
    {
        connection.sync();
        while (const auto event =
                   desktop::Reply<xcb_generic_event_t>(xcb_poll_for_event(connection.get()))) {
            constexpr unsigned SENT = 0x80;
            const unsigned type = event->response_type & ~SENT;
            if (type >= XCB_KEY_PRESS && type <= XCB_BUTTON_RELEASE) {
                // Key and button events have the same fields.
                received.push_back(
                    *static_cast<const xcb_key_press_event_t*>(static_cast<void*>(event.get()))
                );
                received.back().response_type = static_cast<std::uint8_t>(type);
            }
        }
        return received;
    }

    /// What the pressed keys read, in a layout of plain letters and digits.
    std::string typedText()
    {
        std::string text;
        for (const xcb_key_press_event_t& event : events()) {
            constexpr xcb_keysym_t LAST_CHARACTER = 0x7e;
            const int level = (event.state & XCB_MOD_MASK_SHIFT) != 0 ? 1 : 0;
            const xcb_keysym_t symbol = symbolOf(event.detail, level);
            if (event.response_type == XCB_KEY_PRESS && symbol <= LAST_CHARACTER) {
                text.push_back(static_cast<char>(symbol));
            }
        }
        return text;
    }

private:
    xcb_keysym_t symbolOf(xcb_keycode_t key, int level)
    {
        const desktop::Reply<xcb_get_keyboard_mapping_reply_t> mapping(
            xcb_get_keyboard_mapping_reply(
                connection.get(), xcb_get_keyboard_mapping(connection.get(), key, 1), nullptr
            )
        );
        return xcb_get_keyboard_mapping_keysyms(mapping.get())[level];
    }

    desktop::XConnection connection;
    xcb_window_t window = xcb_generate_id(connection.get());
    std::vector<xcb_key_press_event_t> received;
};
