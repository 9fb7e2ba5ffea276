#include "ui/popover/PopoverPlacement.h"

#include <algorithm>

namespace ui {

namespace {

/// The beginning of a stretch that wants to begin at `wanted` and stay within its bounds; what is
/// too long begins where they begin.
int within(int wanted, int length, int low, int high)
{
    return std::max(low, std::min(wanted, high - length));
}

} // namespace

QRect popoverPlace(const QSize& size, const QRect& anchor, const QRect& workArea)
{
    const int below = anchor.y() + anchor.height();
    const int roomBelow = workArea.y() + workArea.height() - below;
    const int roomAbove = anchor.y() - workArea.y();
    const int top = roomBelow >= roomAbove ? below : anchor.y() - size.height();
    const int left = anchor.x() + (anchor.width() - size.width()) / 2;
    return {
        within(left, size.width(), workArea.x(), workArea.x() + workArea.width()),
        within(top, size.height(), workArea.y(), workArea.y() + workArea.height()),
        size.width(),
        size.height()};
}

} // namespace ui
