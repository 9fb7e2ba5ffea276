// Draws what lies beneath the cells of a table, and says how high they are.
#pragma once

#include <QStyledItemDelegate>

namespace ui {

class CellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit CellDelegate(QObject* parent);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// Only the ground of the row, and where the keys are.
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index)
        const override;
};

} // namespace ui
