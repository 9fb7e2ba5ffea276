// What the windows of a lock look like to the desktop.
#pragma once

#include "platform/Geometry.h"
#include "platform/Windows.h"

namespace locking {

inline constexpr platform::Color LOCK_COLOR{65.0 / 255.0, 68.0 / 255.0, 75.0 / 255.0, 1.0};

/// A plain window that hides a whole screen and is above everything on every workspace.
platform::WindowAttributes coveringWindowAttributes(const platform::Rect& screenFrame);

} // namespace locking
