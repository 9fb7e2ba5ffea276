#include "linux/x11/AdoptedWindow.h"

#include "linux/x11/Pixel.h"

#include <algorithm>
#include <array>
#include <utility>

namespace x11 {

AdoptedWindow::AdoptedWindow(
    X11Guard& guard,
    const X11Desktop& desktop,
    std::function<void()> syncToolkit,
    xcb_window_t window,
    const platform::WindowAttributes& attributes
)
    : guard(guard),
      syncToolkit(std::move(syncToolkit)),
      window(window),
      level(static_cast<int>(attributes.level))
{
    sync();
    apply(desktop, attributes);
}

AdoptedWindow::~AdoptedWindow()
{
    guard.release(window);
}

void AdoptedWindow::makeKeyAndOrderFront()
{
    sync();
    guard.makeKey(window, level);
}

void AdoptedWindow::close()
{
    guard.release(window);
}

void AdoptedWindow::sync() const
{
    if (syncToolkit) {
        syncToolkit();
    }
}

void AdoptedWindow::apply(const X11Desktop& desktop, const platform::WindowAttributes& attributes)
    const
{
    const Connection& connection = desktop.connection();
    const std::array<std::uint32_t, 2> values{
        pixelOf(connection, window, attributes.backgroundColor), 1U};
    xcb_change_window_attributes(
        connection.get(), window, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data()
    );
    const platform::Rect& frame = attributes.frame;
    const std::array<std::uint32_t, 4> geometry{
        static_cast<std::uint32_t>(frame.x),
        static_cast<std::uint32_t>(frame.y),
        static_cast<std::uint32_t>(std::max(frame.width, 1)),
        static_cast<std::uint32_t>(std::max(frame.height, 1))};
    const Reply<xcb_generic_error_t> error(xcb_request_check(
        connection.get(),
        xcb_configure_window_checked(
            connection.get(),
            window,
            XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                XCB_CONFIG_WINDOW_HEIGHT,
            geometry.data()
        )
    )); // waiting for the answer puts all this before whatever the toolkit asks for next
}

} // namespace x11
