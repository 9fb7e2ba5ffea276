#include "ui/views/SwitchView.h"

#include "ui/views/Theme.h"

#include <QPainter>

#include <algorithm>

namespace ui {

namespace {

constexpr int TRACK_WIDTH = 34;
constexpr int TRACK_HEIGHT = 20;
constexpr int KNOB_INSET = 3;
constexpr int GAP = 8;
constexpr int EDGE = 2; // room for the outline of the focus

const QColor TRACK_OFF(124, 127, 135);

} // namespace

SwitchView::SwitchView(QWidget* parent) : QCheckBox(parent)
{
    setAttribute(Qt::WA_Hover);
}

QSize SwitchView::sizeHint() const
{
    const QSize label = fontMetrics().size(Qt::TextShowMnemonic, text());
    const int width = TRACK_WIDTH + 2 * EDGE + (text().isEmpty() ? 0 : GAP + label.width());
    return {width, std::max(TRACK_HEIGHT + 2 * EDGE, label.height())};
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
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const int left = mirrored ? width() - TRACK_WIDTH - EDGE : EDGE;
    const QRectF track(left, (height() - TRACK_HEIGHT) / 2.0, TRACK_WIDTH, TRACK_HEIGHT);

    painter.setPen(hasFocus() ? QPen(Theme::FOCUS, EDGE) : QPen(Qt::NoPen));
    const QColor ground = isChecked() ? Theme::ACCENT : TRACK_OFF;
    painter.setBrush(underMouse() ? ground.lighter(112) : ground);
    painter.drawRoundedRect(track, TRACK_HEIGHT / 2.0, TRACK_HEIGHT / 2.0);

    const double side = TRACK_HEIGHT - 2.0 * KNOB_INSET;
    const bool atRight = isChecked() != mirrored;
    const double x = atRight ? track.right() - KNOB_INSET - side : track.left() + KNOB_INSET;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isEnabled() ? Theme::TEXT : Theme::DISABLED);
    painter.drawEllipse(QRectF(x, track.top() + KNOB_INSET, side, side));

    const int textLeft = mirrored ? 0 : TRACK_WIDTH + 2 * EDGE + GAP;
    const QRect place(textLeft, 0, width() - TRACK_WIDTH - 2 * EDGE - GAP, height());
    painter.setPen(isEnabled() ? Theme::TEXT : Theme::DISABLED);
    const int sides = mirrored ? Qt::AlignRight : Qt::AlignLeft;
    painter.drawText(place, sides | Qt::AlignVCenter | Qt::TextShowMnemonic, text());
}

} // namespace ui
