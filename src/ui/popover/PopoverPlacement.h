// Where a popover goes. Pure geometry.
#pragma once

#include <QRect>

namespace ui {

/// Between a popover and its anchor, and between it and the edges of the work area.
inline constexpr int POPOVER_GAP = 4;

/// The place of a popover of that size. An anchor outside the work area is in a panel at that side,
/// and the popover goes where the work area is; otherwise it goes below or above its anchor, where
/// there is more room, or beside it where it fits neither below nor above. It is centred on its
/// anchor and stays within the work area as far as it fits there.
QRect popoverPlace(const QSize& size, const QRect& anchor, const QRect& workArea);

} // namespace ui
