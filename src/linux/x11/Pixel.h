// Colours as the pixel values that a window's visual takes.
#pragma once

#include "linux/x11/Connection.h"
#include "platform/Geometry.h"

#include <cstdint>

namespace x11 {

/// The opaque colour for windows of the root's visual.
std::uint32_t pixelOf(const Connection& connection, const platform::Color& color);

/// The opaque colour for that window, whose visual may differ from the root's.
std::uint32_t
pixelOf(const Connection& connection, xcb_window_t window, const platform::Color& color);

} // namespace x11
