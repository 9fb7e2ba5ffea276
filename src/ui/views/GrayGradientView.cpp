#include "ui/views/GrayGradientView.h"

#include "ui/views/Theme.h"

#include <QLinearGradient>
#include <QPainter>

namespace ui {

QBrush grayGradient(const QRect& area)
{
    QLinearGradient gradient(area.bottomLeft(), area.topLeft());
    gradient.setColorAt(0.0, Theme::GROUND_LOW);
    gradient.setColorAt(1.0, Theme::GROUND_HIGH);
    return gradient;
}

void paintGrayGradient(QPainter& painter, const QRect& area)
{
    painter.fillRect(area, grayGradient(area));
}

GrayGradientView::GrayGradientView(QWidget* parent) : QWidget(parent) {}

void GrayGradientView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    paintGrayGradient(painter, rect());
}

} // namespace ui
