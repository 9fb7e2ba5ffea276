#include "linux/x11/X11Windows.h"

#include "linux/x11/AdoptedWindow.h"
#include "linux/x11/CoverWindow.h"

#include <array>
#include <utility>

namespace x11 {

X11Windows::X11Windows(
    X11Guard& guard, const X11Desktop& desktop, std::function<void()> syncToolkit
)
    : guard(guard),
      desktop(desktop),
      syncToolkit(std::move(syncToolkit)),
      compositor(desktop.connection())
{
}

std::unique_ptr<platform::PlainWindow>
X11Windows::createWindow(const platform::WindowAttributes& attributes)
{
    return std::make_unique<CoverWindow>(guard, attributes);
}

std::unique_ptr<platform::PlainWindow>
X11Windows::adoptWindow(std::uintptr_t nativeWindow, const platform::WindowAttributes& attributes)
{
    return std::make_unique<AdoptedWindow>(
        guard, desktop, syncToolkit, static_cast<xcb_window_t>(nativeWindow), attributes
    );
}

void X11Windows::excludeFromWindowsMenu(std::uintptr_t nativeWindow)
{
    if (syncToolkit) {
        syncToolkit(); // the window may be so new that the display does not know it
    }
    xcb_connection_t* connection = desktop.connection().get();
    const Atoms& atoms = desktop.atoms();
    const std::array<xcb_atom_t, 2> states{atoms.stateSkipTaskbar, atoms.stateSkipPager};
    // The toolkit keeps the states that it finds when it shows the window, so they are to be there
    // by then.
    const xcb_void_cookie_t request = xcb_change_property_checked(
        connection,
        XCB_PROP_MODE_REPLACE,
        static_cast<xcb_window_t>(nativeWindow),
        atoms.wmState,
        XCB_ATOM_ATOM,
        32,
        states.size(),
        states.data()
    );
    static_cast<void>(Reply<xcb_generic_error_t>(xcb_request_check(connection, request)));
}

bool X11Windows::composited()
{
    return compositor.isRunning();
}

} // namespace x11
