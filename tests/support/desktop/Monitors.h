// Arranges the screens of an X server that has one output, as virtual servers do. One thread at a
// time.
#pragma once

#include "desktop/Rectangle.h"
#include "desktop/XConnection.h"

#include <vector>

namespace desktop {

/// Makes the screens exactly these, the first the main one, and the root window as large as they
/// need; other clients see the change as one. Throws `Failure` when the server refuses.
void arrangeMonitors(XConnection& connection, const std::vector<Rectangle>& screens);

} // namespace desktop
