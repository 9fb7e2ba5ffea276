#include "desktop/WindowManager.h"

#include "desktop/Failure.h"
#include "desktop/Wait.h"

#include <algorithm>

namespace desktop {

namespace {

constexpr std::chrono::seconds TIMEOUT{20};

/// A window that asks to be managed, until it is.
class Probe
{
public:
    explicit Probe(XConnection& connection)
        : connection(connection),
          window(xcb_generate_id(connection.get()))
    {
        xcb_create_window(
            connection.get(),
            XCB_COPY_FROM_PARENT,
            window,
            connection.root(),
            0,
            0,
            1,
            1,
            0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT,
            XCB_COPY_FROM_PARENT,
            0,
            nullptr
        );
    }

    /// Asks each time: a window manager that still starts forgets what it was asked.
    bool asksAndIsManaged()
    {
        xcb_map_window(connection.get(), window);
        connection.sync();
        return isManaged();
    }

    bool isManaged()
    {
        const auto clients = connection.property(connection.root(), "_NET_CLIENT_LIST");
        return std::find(clients.begin(), clients.end(), window) != clients.end();
    }

    void destroy()
    {
        xcb_destroy_window(connection.get(), window);
        connection.sync();
    }

private:
    XConnection& connection;
    xcb_window_t window;
};

} // namespace

WindowManager::WindowManager(XConnection& connection, const Environment& environment)
    : process({.arguments = {"openbox", "--sm-disable"}, .environment = environment})
{
    Probe probe(connection);
    const bool manages = waitUntil([&probe] { return probe.asksAndIsManaged(); }, TIMEOUT);
    probe.destroy();
    if (!manages || !waitUntil([&probe] { return !probe.isManaged(); }, TIMEOUT)) {
        throw Failure("the window manager does not come up");
    }
}

} // namespace desktop
