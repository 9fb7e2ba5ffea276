// Asks for a window of one colour that no window manager touches. Any thread; asks without waiting.
#pragma once

#include "linux/x11/Connection.h"
#include "platform/Geometry.h"

namespace x11 {

/// The new window has the identifier `id` and is not shown yet. `frame` is in pixels of the root.
void requestPlainWindow(
    const Connection& connection,
    xcb_window_t id,
    const platform::Rect& frame,
    const platform::Color& color
);

} // namespace x11
