#include "locking/window/PadlockIcon.h"

#include <QPainter>
#include <QPainterPath>

namespace locking {

namespace {

/// In a square of 128 units.
QPainterPath shackle()
{
    QPainterPath path;
    path.moveTo(46, 62);
    path.lineTo(46, 48);
    path.arcTo(QRectF(46, 30, 36, 36), 180, -180);
    path.lineTo(82, 62);
    return path;
}

QPainterPath keyhole()
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addEllipse(QPointF(64, 77), 5.5, 5.5);
    path.addRoundedRect(QRectF(61.5, 78, 5, 13), 2.5, 2.5);
    return path.simplified();
}

QPainterPath body()
{
    QPainterPath path;
    path.addRoundedRect(QRectF(36, 60, 56, 42), 7, 7);
    return path.subtracted(keyhole());
}

} // namespace

QPixmap padlockIcon(int side)
{
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / 128.0, side / 128.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 26));
    painter.drawRoundedRect(QRectF(4, 4, 120, 120), 26, 26);
    const QColor metal(226, 229, 235);
    painter.setBrush(metal);
    painter.drawPath(body());
    painter.strokePath(shackle(), QPen(metal, 8.5, Qt::SolidLine, Qt::FlatCap));
    return pixmap;
}

} // namespace locking
