// A system tray of the display, with one place. It works only while it is asked `icon`; one thread.
#pragma once

#include "desktop/Rectangle.h"
#include "desktop/XConnection.h"

#include <cstdint>
#include <string>

namespace desktop {

class FakeTray
{
public:
    static constexpr std::uint32_t GROUND = 0x204060;

    struct Options
    {
        Rectangle place{100, 50, 24, 24};
        bool transparentIcons = false; // their windows are to have an alpha channel
    };

    /// Is there, in place of another one, when this returns.
    explicit FakeTray(const std::string& displayName) : FakeTray(displayName, Options{}) {}

    FakeTray(const std::string& displayName, const Options& options);

    /// The window that it holds; 0 when none asked, or the latest is gone.
    xcb_window_t icon();

    /// How many asked so far.
    int requests();

    /// Puts the icon out, onto the root window.
    void letGo();

    void resize(std::uint16_t side);

    [[nodiscard]] std::uint8_t depthOfIcon();

    XConnection& display() { return connection; }

private:
    void openWindow(const Options& options);
    void announce();
    void offerAlpha();
    void work();
    void takeIn(xcb_window_t window);

    XConnection connection;
    xcb_window_t tray;
    xcb_window_t held = XCB_NONE;
    int asked = 0;
    std::uint16_t width;
    std::uint16_t height;
};

} // namespace desktop
