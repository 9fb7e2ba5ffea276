// Where a popover goes. Pure geometry.
#pragma once

#include <QRect>

namespace ui {

/// The place of a popover of that size: below its anchor where there is more room than above it,
/// otherwise above, centred on it, and within the work area as far as it fits there.
QRect popoverPlace(const QSize& size, const QRect& anchor, const QRect& workArea);

} // namespace ui
