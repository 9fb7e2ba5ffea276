#include "linux/statusbar/ItemPicture.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPainter>
#include <QPalette>

#include <algorithm>

namespace statusbar {

namespace {

/// A margin keeps the image off the edge of its ground; the smallest items have no room for one.
int imageSide(int side)
{
    constexpr int SMALLEST_WITH_MARGIN = 22;
    constexpr int MARGINS = 11; // as many make the side
    return side < SMALLEST_WITH_MARGIN ? side : side - 2 * (side / MARGINS);
}

constexpr double CORNER = 0.15; // of the side, for the highlighted ground

void fillGround(QPainter& painter, const QSize& size)
{
    const double radius = CORNER * std::min(size.width(), size.height());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight));
    painter.drawRoundedRect(QRectF(QPointF(0, 0), QSizeF(size)), radius, radius);
}

} // namespace

QImage itemPicture(const platform::StatusItemLook& look, QSize size)
{
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    if (look.highlighted) {
        fillGround(painter, size);
    }
    const int side = imageSide(std::min(size.width(), size.height()));
    const QIcon icon(QString::fromStdString(look.image));
    const QPixmap pixmap = icon.pixmap(QSize(side, side), 1.0);
    if (!pixmap.isNull()) {
        const QSize free = size - pixmap.size();
        painter.drawPixmap(QPoint(free.width() / 2, free.height() / 2), pixmap);
    }
    return picture;
}

} // namespace statusbar
