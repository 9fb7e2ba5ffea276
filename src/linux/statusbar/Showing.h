// An item in a status area. Its end takes the item away. Main thread only.
#pragma once

#include "platform/Geometry.h"
#include "platform/Port.h"

#include <optional>

namespace statusbar {

class Showing : public platform::Port
{
public:
    virtual void redraw() = 0;
    virtual void menuChanged() = 0;

    /// In the desktop's pixels; nothing where the area keeps it to itself, or does not know it yet.
    virtual std::optional<platform::Rect> frame() const = 0;
};

} // namespace statusbar
