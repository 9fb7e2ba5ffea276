// Another program with bright windows outside the window manager, as menus and notifications are.
#pragma once

#include "desktop/XConnection.h"

#include <string>

#include <xcb/xcb.h>

class ForeignWindows
{
public:
    static constexpr std::uint16_t WIDTH = 300;
    static constexpr std::uint16_t HEIGHT = 100;

    explicit ForeignWindows(const std::string& display) : connection(display) {}

    xcb_window_t create(int x, int y)
    {
        constexpr std::uint32_t BRIGHT_GREEN = 0x00FF00;
        const std::uint32_t values[] = {BRIGHT_GREEN, 1};
        const xcb_window_t window = xcb_generate_id(connection.get());
        xcb_create_window(
            connection.get(),
            XCB_COPY_FROM_PARENT,
            window,
            connection.root(),
            static_cast<std::int16_t>(x),
            static_cast<std::int16_t>(y),
            WIDTH,
            HEIGHT,
            0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT,
            XCB_COPY_FROM_PARENT,
            XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT,
            values
        );
        return window;
    }

    void mapAndRaise(xcb_window_t window)
    {
        xcb_map_window(connection.get(), window);
        restack(window, XCB_STACK_MODE_ABOVE);
    }

    void lower(xcb_window_t window) { restack(window, XCB_STACK_MODE_BELOW); }

    desktop::XConnection& display() { return connection; }

private:
    void restack(xcb_window_t window, std::uint32_t mode)
    {
        xcb_configure_window(connection.get(), window, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
        connection.sync();
    }

    desktop::XConnection connection;
};
