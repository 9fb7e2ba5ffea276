// Pictures with transparency on windows, with the RENDER extension. Main thread.
#pragma once

#include "linux/x11/Connection.h"

#include <QImage>

#include <cstdint>

namespace tray {

inline constexpr std::uint8_t ALPHA_DEPTH = 32;

/// Whether pixels of the visual have an alpha channel; false for one that the screen does not have.
bool hasAlpha(const x11::Connection& connection, xcb_visualid_t visual);

struct Canvas
{
    xcb_window_t window = XCB_NONE;
    xcb_visualid_t visual = XCB_NONE;
};

/// Clears the window to its background and lays the premultiplied picture over it. Nothing where
/// the display cannot.
void compose(const x11::Connection& connection, const Canvas& canvas, const QImage& picture);

} // namespace tray
