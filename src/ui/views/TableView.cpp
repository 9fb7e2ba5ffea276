#include "ui/views/TableView.h"

#include "platform/Call.h"
#include "ui/views/CellDelegate.h"
#include "ui/views/TableModel.h"

#include <QCoreApplication>
#include <QCursor>
#include <QHoverEvent>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace ui {

TableView::TableView(QWidget* parent)
    : QListView(parent),
      rows(std::make_unique<TableModel>()),
      delegate(std::make_unique<CellDelegate>(nullptr))
{
    rows->titleOfRow = [this](int row) { return titleOfRow ? titleOfRow(row) : QString(); };
    setModel(rows.get());
    setItemDelegate(delegate.get());
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection); // for assistive tools alone, see selectionCommand
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    setFrameShape(NoFrame);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus); // scrolling by wheel leaves the keys where they are
    viewport()->setAttribute(Qt::WA_Hover);
    viewport()->setAutoFillBackground(false);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { showCells(); });
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] { layBarOverRows(); });
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex& index) {
        if (!secondPress) {
            select(index.row());
        }
    });
    connect(
        selectionModel(),
        &QItemSelectionModel::selectionChanged,
        this,
        [this](const QItemSelection& selected) {
            if (!selected.isEmpty()) {
                const int row = selected.first().top();
                clearSelection();
                select(row);
            }
        }
    );
}

TableView::~TableView()
{
    setModel(nullptr);
}

QItemSelectionModel::SelectionFlags
TableView::selectionCommand(const QModelIndex& /*index*/, const QEvent* /*event*/) const
{
    return QItemSelectionModel::NoUpdate; // the pointer and the keys choose, they do not select
}

void TableView::reloadData(std::optional<int> current)
{
    const int oldRow = currentRow();
    const QRect oldPlace = visualRect(rows->index(oldRow));
    const bool inSight = viewport()->rect().intersects(oldPlace);
    int place = verticalScrollBar()->value();
    const int count = numberOfRows && !concealed ? numberOfRows() : 0;
    const int row = std::min(current.value_or(oldRow), count - 1);
    if (inSight && row >= 0 && row < oldRow) {
        place -= (oldRow - row) * oldPlace.height();
    } else if (inSight && row > oldRow) {
        place += (row - oldRow) * oldPlace.height();
    }
    rows->reset(count);
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(place);
    setCurrentRow(row);
    refillCells();
    showCells();
    hoverAgain();
}

void TableView::setConcealed(bool wanted)
{
    if (std::exchange(concealed, wanted) == wanted) {
        return;
    }
    if (concealed) {
        discardCells();
    }
    reloadData();
}

/// The event that is dealt with may be that of a cell.
void TableView::discardCells()
{
    for (const auto& [row, cell] : cells) {
        spareCells.push_back(cell);
    }
    cells.clear();
    for (MyCell* const cell : std::exchange(spareCells, {})) {
        cell->setParent(nullptr);
        cell->deleteLater();
    }
}

int TableView::currentRow() const
{
    return currentIndex().row();
}

void TableView::setCurrentRow(int row)
{
    if (row < 0) {
        return;
    }
    setAutoScroll(false); // who looks elsewhere in the list goes on looking there
    setCurrentIndex(rows->index(row));
    setAutoScroll(true);
}

MyCell* TableView::cellAt(int row) const
{
    const auto found = cells.find(row);
    return found == cells.end() ? nullptr : found->second;
}

void TableView::showCells()
{
    if (!isVisible() || placing) {
        return;
    }
    const QScopedValueRollback guard(placing, true); // finding a row may lay the rows out
    const int count = rows->rowCount();
    const QModelIndex top = indexAt(QPoint(viewport()->width() / 2, 0));
    const QModelIndex bottom = indexAt(QPoint(viewport()->width() / 2, viewport()->height() - 1));
    placeCells(top.isValid() ? top.row() : 0, bottom.isValid() ? bottom.row() + 1 : count);
}

void TableView::placeCells(int first, int end)
{
    for (auto entry = cells.begin(); entry != cells.end();) {
        if (entry->first >= first && entry->first < end) {
            ++entry;
            continue;
        }
        if (entry->second->isAncestorOf(focusWidget())) {
            setFocus(); // the keys stay in the list
        }
        entry->second->hide();
        spareCells.push_back(entry->second);
        entry = cells.erase(entry);
    }
    for (int row = first; row < end; ++row) {
        MyCell& cell = cellFor(row);
        cell.setGeometry(visualRect(rows->index(row)));
        cell.show();
    }
    chainCells();
}

void TableView::chainCells()
{
    QWidget* previous = this;
    for (const auto& [row, cell] : cells) {
        QWidget* const button = viewWithTag(*cell, MyCell::BUTTON_TAG);
        setTabOrder(previous, button);
        previous = button;
    }
}

MyCell& TableView::cellFor(int row)
{
    MyCell*& cell = cells[row];
    if (cell != nullptr) {
        return *cell;
    }
    if (spareCells.empty()) {
        cell = new MyCell(viewport());
    } else {
        cell = spareCells.back();
        spareCells.pop_back();
    }
    if (fillCell) {
        fillCell(row, *cell);
    }
    return *cell;
}

void TableView::refillCells()
{
    for (const auto& [row, cell] : cells) {
        if (row < rows->rowCount() && fillCell) {
            fillCell(row, *cell);
        }
    }
}

void TableView::hoverAgain()
{
    if (!viewport()->underMouse()) {
        return;
    }
    // another row may have come under a pointer that rests
    const QPoint place = viewport()->mapFromGlobal(QCursor::pos());
    QHoverEvent hover(QEvent::HoverMove, place, QCursor::pos(), place);
    QCoreApplication::sendEvent(viewport(), &hover);
}

void TableView::select(int row) const
{
    if (row >= 0) {
        platform::call(onSelect, row);
    }
}

void TableView::remove(int row) const
{
    if (row >= 0) {
        platform::call(onDelete, row);
    }
}

/// Where there is a scroll bar, it takes nothing from the width of the rows.
void TableView::layBarOverRows()
{
    const QScrollBar& bar = *verticalScrollBar();
    const int taken = bar.maximum() > bar.minimum() ? bar.sizeHint().width() : 0;
    setViewportMargins(0, 0, -taken, 0);
}

void TableView::updateGeometries()
{
    QListView::updateGeometries();
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
    scrollTo(currentIndex());
}

void TableView::mousePressEvent(QMouseEvent* event)
{
    secondPress = false;
    QListView::mousePressEvent(event);
}

void TableView::mouseDoubleClickEvent(QMouseEvent* event)
{
    secondPress = true;
    event->accept();
}

bool TableView::isKeyUsed(const QKeyEvent& event) const
{
    const std::function<bool(const QKeyEvent&)> listener = onKeyDown;
    return listener && listener(event);
}

void TableView::keyPressEvent(QKeyEvent* event)
{
    if (isKeyUsed(*event)) {
        return;
    }
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (!event->isAutoRepeat()) {
            select(currentRow());
        }
        return;
    case Qt::Key_Delete:
        if (!event->isAutoRepeat()) {
            remove(currentRow());
        }
        return;
    default:
        QListView::keyPressEvent(event);
    }
}

} // namespace ui
