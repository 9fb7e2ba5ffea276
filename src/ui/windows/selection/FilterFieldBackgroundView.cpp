#include "ui/windows/selection/FilterFieldBackgroundView.h"

#include "ui/views/Theme.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>

namespace ui {

namespace {

constexpr float OPACITY = 0.2F;

} // namespace

FilterFieldBackgroundView::FilterFieldBackgroundView(QWidget* parent) : QWidget(parent)
{
    connect(qApp, &QApplication::focusChanged, this, [this] { update(); });
}

void FilterFieldBackgroundView::paintEvent(QPaintEvent* /*event*/)
{
    const auto* const field = findChild<QLineEdit*>();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::GROUND_LOW);
    painter.drawRoundedRect(area, Theme::RADIUS, Theme::RADIUS);
    const bool hasKeys = field != nullptr && field->hasFocus();
    painter.setPen(hasKeys ? Theme::FOCUS : Theme::BORDER_ON_LIGHT);
    painter.setBrush(QColor::fromRgbF(1.0F, 1.0F, 1.0F, OPACITY));
    painter.drawRoundedRect(area, Theme::RADIUS, Theme::RADIUS);
}

} // namespace ui
