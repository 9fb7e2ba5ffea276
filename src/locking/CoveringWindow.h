// What the windows of a lock look like to the desktop, and those that only hide a screen. Main
// thread only.
#pragma once

#include "platform/Geometry.h"
#include "platform/Windows.h"

#include <memory>
#include <vector>

namespace locking {

/// A plain window that hides a whole screen and is above everything on every workspace.
platform::WindowAttributes coveringWindowAttributes(const platform::Rect& screenFrame);

/// One such window for each screen but the main one, in the desktop's order, not shown yet. Fatal
/// when the desktop names no screens or no main screen.
std::vector<std::unique_ptr<platform::PlainWindow>> createCoveringWindows();

} // namespace locking
