#include "linux/statusbar/ItemPicture.h"

#include "linux/statusbar/StatusArea.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPainter>
#include <QPalette>

#include <algorithm>

namespace statusbar {

namespace {

/// Images are drawn on a grid of 16, and stay sharp in sizes that follow it: 16 pixels in an item
/// of 22, 24 in one of 32, 32 in one of 44. The rest keeps the image off the edge of its ground.
int imageSide(int side)
{
    constexpr int GRID = 16;
    constexpr int STEP = GRID / 2;
    if (side < THICKNESS) {
        return std::min(side, GRID);
    }
    const int wanted = side * 3 / 4;
    return wanted - wanted % STEP;
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
