#include "ui/views/CellDelegate.h"

#include "ui/views/RowGround.h"
#include "ui/views/Theme.h"

#include <algorithm>

namespace ui {

namespace {

constexpr int LEAST_HEIGHT = 5 * Theme::GRID;
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
    paintRowGround(
        *painter,
        option.rect.adjusted(INSET, 0, -INSET, 0),
        {.hasKeys = option.state.testFlag(QStyle::State_HasFocus),
         .hovered = option.state.testFlag(QStyle::State_MouseOver)}
    );
}

} // namespace ui
