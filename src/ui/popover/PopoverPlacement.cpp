#include "ui/popover/PopoverPlacement.h"

#include <algorithm>

namespace ui {

namespace {

/// One dimension of a rectangle.
struct Stretch
{
    int low;
    int high; // behind the last one

    int length() const { return high - low; }
};

Stretch horizontal(const QRect& rectangle)
{
    return {rectangle.x(), rectangle.x() + rectangle.width()};
}

Stretch vertical(const QRect& rectangle)
{
    return {rectangle.y(), rectangle.y() + rectangle.height()};
}

bool isOutside(const Stretch& anchor, const Stretch& area)
{
    return anchor.high <= area.low || anchor.low >= area.high;
}

/// What is too long begins where the area begins.
int within(int wanted, int length, const Stretch& area)
{
    const int low = area.low + POPOVER_GAP;
    return std::max(low, std::min(wanted, area.high - POPOVER_GAP - length));
}

int roomBefore(const Stretch& anchor, const Stretch& area)
{
    return anchor.low - area.low;
}

int roomBehind(const Stretch& anchor, const Stretch& area)
{
    return area.high - anchor.high;
}

bool fits(int length, const Stretch& anchor, const Stretch& area)
{
    return length + 2 * POPOVER_GAP <= std::max(roomBefore(anchor, area), roomBehind(anchor, area));
}

/// Beginning of what does not lie over the anchor.
int next(int length, const Stretch& anchor, const Stretch& area)
{
    const bool behind = roomBehind(anchor, area) >= roomBefore(anchor, area);
    const int wanted = behind ? anchor.high + POPOVER_GAP : anchor.low - POPOVER_GAP - length;
    return within(wanted, length, area);
}

/// Beginning of what is centred on the anchor.
int centred(int length, const Stretch& anchor, const Stretch& area)
{
    return within(anchor.low + (anchor.length() - length) / 2, length, area);
}

bool goesBeside(const QSize& size, const QRect& anchor, const QRect& workArea)
{
    if (isOutside(vertical(anchor), vertical(workArea))) {
        return false;
    }
    return isOutside(horizontal(anchor), horizontal(workArea)) ||
           !fits(size.height(), vertical(anchor), vertical(workArea));
}

} // namespace

QRect popoverPlace(const QSize& size, const QRect& anchor, const QRect& workArea)
{
    const bool beside = goesBeside(size, anchor, workArea);
    const auto x = beside ? next : centred;
    const auto y = beside ? centred : next;
    return {
        QPoint(
            x(size.width(), horizontal(anchor), horizontal(workArea)),
            y(size.height(), vertical(anchor), vertical(workArea))
        ),
        size};
}

} // namespace ui
