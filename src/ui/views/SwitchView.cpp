#include "ui/views/SwitchView.h"

#include "ui/views/RowGround.h"
#include "ui/views/Theme.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace ui {

namespace {

constexpr int TRACK_WIDTH = 34;
constexpr int TRACK_HEIGHT = 20;
constexpr int KNOB_INSET = 3;
constexpr int GAP = Theme::GRID;
constexpr int LEAST_HEIGHT = 4 * Theme::GRID;

const QColor TRACK_OFF(124, 127, 135);

} // namespace

SwitchView::SwitchView(QWidget* parent) : QCheckBox(parent)
{
    setAttribute(Qt::WA_Hover);
}

QSize SwitchView::sizeHint() const
{
    const QSize label = fontMetrics().size(Qt::TextShowMnemonic, text());
    const int width = TRACK_WIDTH + 2 * GAP + (text().isEmpty() ? 0 : GAP + label.width());
    return {width, std::max(LEAST_HEIGHT, label.height() + GAP)};
}

QSize SwitchView::minimumSizeHint() const
{
    return sizeHint();
}

bool SwitchView::hitButton(const QPoint& position) const
{
    return rect().contains(position);
}

void SwitchView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintRowGround(painter, rect(), {.hasKeys = hasFocus(), .hovered = underMouse()});
    paintSwitch(painter);
    paintText(painter);
}

void SwitchView::paintSwitch(QPainter& painter) const
{
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const int left = mirrored ? width() - TRACK_WIDTH - GAP : GAP;
    const QRectF track(left, (height() - TRACK_HEIGHT) / 2.0, TRACK_WIDTH, TRACK_HEIGHT);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isChecked() ? Theme::ACCENT : TRACK_OFF);
    painter.drawRoundedRect(track, TRACK_HEIGHT / 2.0, TRACK_HEIGHT / 2.0);

    const double side = TRACK_HEIGHT - 2.0 * KNOB_INSET;
    const bool atRight = isChecked() != mirrored;
    const double x = atRight ? track.right() - KNOB_INSET - side : track.left() + KNOB_INSET;
    painter.setBrush(isEnabled() ? Theme::TEXT : Theme::DISABLED);
    painter.drawEllipse(QRectF(x, track.top() + KNOB_INSET, side, side));
}

void SwitchView::paintText(QPainter& painter) const
{
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const int beside = TRACK_WIDTH + 2 * GAP;
    const QRect place(mirrored ? GAP : beside, 0, width() - beside - GAP, height());
    const bool underlined = style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, this) != 0;
    const int sides = mirrored ? Qt::AlignRight : Qt::AlignLeft;
    const int letters = underlined ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
    painter.setPen(isEnabled() ? Theme::TEXT : Theme::DISABLED);
    painter.drawText(place, sides | Qt::AlignVCenter | letters, text());
}

} // namespace ui
