// What lies beneath a row that has the keys or the pointer. Main thread only.
#pragma once

#include <QRect>

class QPainter;

namespace ui {

struct RowState
{
    bool hasKeys = false;
    bool hovered = false;
};

/// Draws it within `area`; nothing where the row has neither.
void paintRowGround(QPainter& painter, const QRect& area, const RowState& state);

} // namespace ui
