// Makes the cells of a table: each is the toolkit's editor of its row, and paints itself.
#pragma once

#include <QStyledItemDelegate>

#include <functional>

namespace ui {

class MyCell;

class CellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit CellDelegate(QObject* parent);

    std::function<void(int row, MyCell& cell)> fillCell;

    QWidget* createEditor(
        QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index
    ) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void updateEditorGeometry(
        QWidget* editor, const QStyleOptionViewItem& option, const QModelIndex& index
    ) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    /// Only the ground of the row, and where the keys are.
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index)
        const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
};

} // namespace ui
