#include "helper/DisplayWatch.h"

#include "linux/process/Environment.h"
#include "platform/Call.h"

#include <array>
#include <cstring>
#include <string>

#include <sys/socket.h>
#include <sys/un.h>
#include <xcb/xcb.h>

namespace helper {

namespace {

// As the protocol's own library finds it.
std::string waylandPath(const std::string& display)
{
    return display.front() == '/' ? display
                                  : process::environmentValue("XDG_RUNTIME_DIR") + "/" + display;
}

descriptors::FileDescriptor connectToWayland(const std::string& path)
{
    sockaddr_un address = {};
    descriptors::FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return {};
    }
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    const bool connected =
        ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    return connected ? std::move(socket) : descriptors::FileDescriptor();
}

} // namespace

void DisplayWatch::connect()
{
    const std::string display = process::environmentValue("WAYLAND_DISPLAY");
    if (!display.empty()) {
        wayland = connectToWayland(waylandPath(display));
    } else if (!process::environmentValue("DISPLAY").empty()) {
        x11.reset(::xcb_connect(nullptr, nullptr));
        if (::xcb_connection_has_error(x11.get()) != 0) {
            x11.reset();
        }
    }
}

pollfd DisplayWatch::awaited() const
{
    const int x11Descriptor = x11 != nullptr ? ::xcb_get_file_descriptor(x11.get()) : -1;
    return {wayland.isOpen() ? wayland.get() : x11Descriptor, POLLIN, 0};
}

void DisplayWatch::wake()
{
    if (!isLost()) {
        return;
    }
    wayland = descriptors::FileDescriptor();
    x11.reset();
    platform::call(onLost);
}

// Reads and drops what a display sends to everybody.
bool DisplayWatch::isLost() const
{
    if (x11 != nullptr) {
        while (xcb_generic_event_t* event = ::xcb_poll_for_event(x11.get())) {
            std::free(event);
        }
        return ::xcb_connection_has_error(x11.get()) != 0;
    }
    std::array<char, 1024> ignored{};
    return ::recv(wayland.get(), ignored.data(), ignored.size(), MSG_DONTWAIT) == 0;
}

void DisplayWatch::Disconnect::operator()(xcb_connection_t* connection) const
{
    ::xcb_disconnect(connection);
}

} // namespace helper
