// Another program that holds keyboard and pointer, as one with an open menu does, until it is given
// Escape.
#pragma once

#include "desktop/Failure.h"
#include "desktop/ForeignClient.h"
#include "desktop/XConnection.h"

#include <string>

#include <xcb/xcb.h>

class HoldingClient
{
public:
    /// Throws when it does not get them. Each of its menus is closed by an Escape.
    explicit HoldingClient(const std::string& display, int menus = 1)
        : connection(display),
          menus(menus)
    {
        if (!desktop::grabInput(connection)) {
            throw desktop::Failure("the grabs are refused");
        }
    }

    /// Looks at its events; closes its menu when Escape is among them.
    void turn()
    {
        connection.sync();
        while (const auto event =
                   desktop::Reply<xcb_generic_event_t>(xcb_poll_for_event(connection.get()))) {
            if (event->response_type == XCB_KEY_PRESS) {
                ++keys;
                const auto& press =
                    *static_cast<const xcb_key_press_event_t*>(static_cast<void*>(event.get()));
                if (isEscape(press.detail) && --menus == 0) {
                    letGo();
                }
            }
        }
    }

    void letGo()
    {
        holding = false;
        desktop::releaseInput(connection);
    }

    bool holds() const { return holding; }

    int keysSeen() const { return keys; }

private:
    bool isEscape(xcb_keycode_t key)
    {
        constexpr xcb_keysym_t ESCAPE = 0xff1b;
        const desktop::Reply<xcb_get_keyboard_mapping_reply_t> mapping(
            xcb_get_keyboard_mapping_reply(
                connection.get(), xcb_get_keyboard_mapping(connection.get(), key, 1), nullptr
            )
        );
        return *xcb_get_keyboard_mapping_keysyms(mapping.get()) == ESCAPE;
    }

    desktop::XConnection connection;
    int menus;
    bool holding = true;
    int keys = 0;
};
