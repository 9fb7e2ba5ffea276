// The window behind all others of the lock: it covers the whole desktop and has no content. Made
// beforehand; showing it is one request. Where nobody composes the screen's picture from whole
// windows, it is larger than the desktop, so that a screen that is added is covered before anybody
// could react. Used by one thread.
#pragma once

#include "linux/x11/Compositor.h"

namespace x11 {

class Backdrop
{
public:
    explicit Backdrop(const Connection& connection);
    ~Backdrop();
    Backdrop(const Backdrop&) = delete;
    Backdrop& operator=(const Backdrop&) = delete;
    Backdrop(Backdrop&&) = delete;
    Backdrop& operator=(Backdrop&&) = delete;

    xcb_window_t window() const { return id; }

    void show() const;
    void hide() const;

    /// The desktop may have another size.
    void fitDesktop();

private:
    struct Size
    {
        std::uint16_t width;
        std::uint16_t height;

        friend bool operator==(const Size&, const Size&) = default;
    };

    Size sizeToCover() const;

    const Connection& connection;
    Compositor compositor;
    xcb_window_t id;
    Size size{};
};

} // namespace x11
