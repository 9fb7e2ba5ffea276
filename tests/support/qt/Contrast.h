// How well a text stands out from its ground: from 1 for not at all to 21. 4.5 is legible for most.
#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace support {

/// Light that a viewer sees in the colour, from 0 to 1, as web accessibility rules reckon it.
inline double luminance(const QColor& color)
{
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

inline double contrast(const QColor& one, const QColor& other)
{
    const double lighter = std::max(luminance(one), luminance(other));
    const double darker = std::min(luminance(one), luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace support
