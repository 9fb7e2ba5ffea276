#include "ui/views/CellDelegate.h"

#include "ui/views/Theme.h"

#include <QPainter>

#include <algorithm>

namespace ui {

namespace {

constexpr int LEAST_HEIGHT = 5 * Theme::GRID;
constexpr int HOVER_OPACITY = 22;
constexpr int INSET = Theme::GRID;

} // namespace

CellDelegate::CellDelegate(QObject* parent) : QStyledItemDelegate(parent) {}

QSize CellDelegate::sizeHint(
    const QStyleOptionViewItem& option, const QModelIndex& /*index*/
) const
{
    return {0, std::max(LEAST_HEIGHT, option.fontMetrics.height() + 2 * Theme::GRID)};
}

void CellDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& /*index*/
) const
{
    const bool hasKeys = option.state.testFlag(QStyle::State_HasFocus);
    const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
    if (!hasKeys && !hovered) {
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(hasKeys ? QPen(Theme::FOCUS) : QPen(Qt::NoPen));
    painter->setBrush(hovered ? QColor(255, 255, 255, HOVER_OPACITY) : QColor(Qt::transparent));
    const QRectF ground = QRectF(option.rect).adjusted(INSET + 0.5, 0.5, -INSET - 0.5, -0.5);
    painter->drawRoundedRect(ground, Theme::RADIUS, Theme::RADIUS);
    painter->restore();
}

} // namespace ui
