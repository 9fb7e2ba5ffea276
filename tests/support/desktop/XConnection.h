// A connection to an X server. One thread at a time.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace desktop {

struct FreeDeleter
{
    void operator()(void* memory) const { std::free(memory); }
};

/// What xcb hands out to be freed.
template <typename T> using Reply = std::unique_ptr<T, FreeDeleter>;

class XConnection
{
public:
    /// Throws `Failure` when there is no such display.
    explicit XConnection(const std::string& displayName);
    ~XConnection();
    XConnection(const XConnection&) = delete;
    XConnection& operator=(const XConnection&) = delete;
    XConnection(XConnection&&) = delete;
    XConnection& operator=(XConnection&&) = delete;

    [[nodiscard]] xcb_connection_t* get() const { return connection; }

    [[nodiscard]] const xcb_screen_t& screen() const { return *firstScreen; }

    [[nodiscard]] xcb_window_t root() const { return firstScreen->root; }

    xcb_atom_t atom(const std::string& name);

    /// The 32-bit values of a property; empty when the window or the property is not there.
    std::vector<std::uint32_t> property(xcb_window_t window, const std::string& name);

    /// The bytes of a text property; empty when the window or the property is not there.
    std::string textProperty(xcb_window_t window, const std::string& name);

    /// Sends everything and waits until the server has done it.
    void sync();

private:
    xcb_connection_t* connection = nullptr;
    xcb_screen_t* firstScreen = nullptr;
};

} // namespace desktop
