// A colour of the core as the toolkit paints it.
#pragma once

#include "platform/Geometry.h"

#include <QColor>

namespace toolkit {

inline QColor colorOf(const platform::Color& color)
{
    return QColor::fromRgbF(
        static_cast<float>(color.red),
        static_cast<float>(color.green),
        static_cast<float>(color.blue),
        static_cast<float>(color.alpha)
    );
}

} // namespace toolkit
