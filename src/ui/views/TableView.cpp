#include "ui/views/TableView.h"

#include "ui/views/CellDelegate.h"
#include "ui/views/TableModel.h"

#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

namespace ui {

TableView::TableView(QWidget* parent)
    : QListView(parent),
      rows(std::make_unique<TableModel>()),
      delegate(std::make_unique<CellDelegate>(nullptr))
{
    rows->titleOfRow = [this](int row) { return titleOfRow ? titleOfRow(row) : QString(); };
    delegate->fillCell = [this](int row, MyCell& cell) {
        if (fillCell) {
            fillCell(row, cell);
        }
    };
    setModel(rows.get());
    setItemDelegate(delegate.get());
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(NoSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setFrameShape(NoFrame);
    setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_Hover);
    viewport()->setAutoFillBackground(false);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { showCells(); });
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        select(index.row());
    });
}

TableView::~TableView()
{
    setModel(nullptr);
}

void TableView::reloadData()
{
    const int current = currentIndex().row();
    const int place = verticalScrollBar()->value();
    const QWidget* const focused = focusWidget();
    const bool keysInCell =
        focused != nullptr && focused != this && isAncestorOf(focused) && focused->hasFocus();
    dropCells();
    rows->reset(numberOfRows ? numberOfRows() : 0);
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(place);
    if (current >= 0 && rows->rowCount() > 0) {
        setCurrentIndex(rows->index(std::min(current, rows->rowCount() - 1)));
    }
    if (keysInCell) {
        setFocus();
    }
    showCells();
}

MyCell* TableView::cellAt(int row) const
{
    return qobject_cast<MyCell*>(indexWidget(rows->index(row)));
}

void TableView::showCells()
{
    if (!isVisible()) {
        return;
    }
    const int count = rows->rowCount();
    const QModelIndex top = indexAt(QPoint(viewport()->width() / 2, 0));
    const QModelIndex bottom = indexAt(QPoint(viewport()->width() / 2, viewport()->height() - 1));
    const int first = top.isValid() ? top.row() : 0;
    const int end = count == 0 ? 0 : (bottom.isValid() ? bottom.row() + 1 : count);
    for (int row = firstCell; row < std::min(endOfCells, count); ++row) {
        if (row < first || row >= end) {
            closePersistentEditor(rows->index(row));
        }
    }
    for (int row = first; row < end; ++row) {
        const QModelIndex index = rows->index(row);
        if (!isPersistentEditorOpen(index)) {
            openPersistentEditor(index);
        }
    }
    firstCell = first;
    endOfCells = end;
}

void TableView::dropCells()
{
    for (int row = firstCell; row < endOfCells; ++row) {
        closePersistentEditor(rows->index(row));
    }
    firstCell = 0;
    endOfCells = 0;
}

void TableView::select(int row)
{
    const std::function<void(int)> listener = onSelect;
    if (row >= 0 && listener) {
        listener(row);
    }
}

void TableView::resizeEvent(QResizeEvent* event)
{
    QListView::resizeEvent(event);
    showCells();
}

void TableView::showEvent(QShowEvent* event)
{
    QListView::showEvent(event);
    showCells();
}

void TableView::focusInEvent(QFocusEvent* event)
{
    QListView::focusInEvent(event);
    if (!currentIndex().isValid() && rows->rowCount() > 0) {
        setCurrentIndex(rows->index(0));
    }
}

void TableView::keyPressEvent(QKeyEvent* event)
{
    const int row = currentIndex().row();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        select(row);
        return;
    case Qt::Key_Delete: {
        const std::function<void(int)> listener = onDelete;
        if (row >= 0 && listener) {
            listener(row);
        }
        return;
    }
    default:
        QListView::keyPressEvent(event);
    }
}

} // namespace ui
