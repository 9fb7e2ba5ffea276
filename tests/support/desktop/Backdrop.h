// The ground of a desktop.
#pragma once

#include "desktop/Pixels.h"
#include "desktop/XConnection.h"

namespace desktop {

/// Colours the root window wherever no window covers it.
void paintBackdrop(XConnection& connection, Pixel colour);

} // namespace desktop
