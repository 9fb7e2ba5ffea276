// Another program with bright windows outside the window manager, as menus and notifications are.
#pragma once

#include "desktop/ForeignClient.h"
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
        constexpr desktop::Pixel BRIGHT_GREEN = 0x00FF00;
        return desktop::createForeignWindow(
            connection,
            {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), WIDTH, HEIGHT},
            BRIGHT_GREEN
        );
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
