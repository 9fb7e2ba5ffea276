// Plain values for places and colours on the screens.
#pragma once

namespace platform {

/// A rectangle in physical pixels of the desktop; the origin is its upper left corner.
struct Rect
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    friend bool operator==(const Rect&, const Rect&) = default;
};

/// A calibrated RGB colour, each component from 0.0 to 1.0.
struct Color
{
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    double alpha = 1.0;

    friend bool operator==(const Color&, const Color&) = default;
};

} // namespace platform
