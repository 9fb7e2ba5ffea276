// A list of applications. Only the rows on the screen have a cell, so that ten thousand rows cost
// little more than ten; assistive tools know all rows by their titles.
#pragma once

#include "ui/views/MyCell.h"

#include <QListView>

#include <functional>
#include <memory>

namespace ui {

class CellDelegate;
class TableModel;

class TableView : public QListView
{
    Q_OBJECT

public:
    explicit TableView(QWidget* parent = nullptr);
    TableView(const TableView&) = delete;
    TableView& operator=(const TableView&) = delete;
    TableView(TableView&&) = delete;
    TableView& operator=(TableView&&) = delete;
    ~TableView() override;

    /// Asked by `reloadData`.
    std::function<int()> numberOfRows;

    /// The row's accessible text.
    std::function<QString(int row)> titleOfRow;

    /// Fills a new cell for the row.
    std::function<void(int row, MyCell& cell)> fillCell;

    /// The row was chosen: clicked, or the key Return or Space on it.
    std::function<void(int row)> onSelect;

    /// The key Delete on the row.
    std::function<void(int row)> onDelete;

    /// Asks for everything anew. The current row and the place of the scroll bar stay as near as
    /// they can.
    void reloadData();

    /// The cell that shows the row; nothing where it is not on the screen.
    MyCell* cellAt(int row) const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// Has a cell for each row on the screen and for no other.
    void showCells();
    void dropCells();
    void select(int row);

    std::unique_ptr<TableModel> rows;
    std::unique_ptr<CellDelegate> delegate;
    int firstCell = 0;
    int endOfCells = 0;
};

} // namespace ui
