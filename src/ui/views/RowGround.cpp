#include "ui/views/RowGround.h"

#include "ui/views/Theme.h"

#include <QPainter>

namespace ui {

void paintRowGround(QPainter& painter, const QRect& area, const RowState& state)
{
    constexpr int HOVER_OPACITY = 22;
    if (!state.hasKeys && !state.hovered) {
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(state.hasKeys ? QPen(Theme::FOCUS) : QPen(Qt::NoPen));
    painter.setBrush(state.hovered ? QColor(255, 255, 255, HOVER_OPACITY) : Qt::transparent);
    painter.drawRoundedRect(
        QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5), Theme::RADIUS, Theme::RADIUS
    );
    painter.restore();
}

} // namespace ui
