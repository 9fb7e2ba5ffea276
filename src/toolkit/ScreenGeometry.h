// Between the desktop's pixels and the toolkit's own, which are larger on a scaled screen.
#pragma once

#include "platform/Geometry.h"

#include <QRect>

namespace toolkit {

/// The toolkit's rectangle for the frame of a screen, or for any other on the screen that holds its
/// origin. Main thread only.
QRect toolkitGeometry(const platform::Rect& frame);

} // namespace toolkit
