// A list of applications, its scroll bar over the edge of its rows. Only the rows on the screen
// have a cell, and cells are used again for other rows, so that ten thousand rows cost little more
// than ten; assistive tools know all rows by their titles, and selecting one there chooses it. Main
// thread only.
#pragma once

#include "ui/views/MyCell.h"

#include <QListView>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace ui {

class CellDelegate;
class TableModel;

class TableView : public QListView
{
    Q_OBJECT

public:
    explicit TableView(QWidget* parent = nullptr);
    Q_DISABLE_COPY_MOVE(TableView)
    ~TableView() override;

    /// Asked by `reloadData`.
    std::function<int()> numberOfRows;

    /// The row's accessible text.
    std::function<QString(int row)> titleOfRow;

    /// Fills the cell for the row. It may have shown another row before.
    std::function<void(int row, MyCell& cell)> fillCell;

    /// The row was chosen: clicked, or the key Return or Space on it. The second press of a double
    /// click and a key that is held down choose nothing: by then another row may be there.
    std::function<void(int row)> onSelect;

    /// The key Delete on the row.
    std::function<void(int row)> onDelete;

    /// Asked first at each key; true when the key was used.
    std::function<bool(const QKeyEvent& event)> onKeyDown;

    /// Asks for everything anew. The current row, where `current` names no other, and the place of
    /// the scroll bar stay as near as they can.
    void reloadData(std::optional<int> current = std::nullopt);

    /// Concealed, it has no rows, for assistive tools and for whoever looks through it. What it
    /// shows then is asked for when it is revealed.
    void setConcealed(bool wanted);

    /// The row that the keys are on; -1 for none.
    int currentRow() const;

    /// Moves the keys there; where the list is scrolled to stays as it is.
    void setCurrentRow(int row);

    /// The cell that shows the row; nothing where it is not on the screen.
    MyCell* cellAt(int row) const;

protected:
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void updateGeometries() override;
    QItemSelectionModel::SelectionFlags
    selectionCommand(const QModelIndex& index, const QEvent* event) const override;

private:
    /// Has a cell for each row on the screen and for no other.
    void showCells();
    void placeCells(int first, int end);
    MyCell& cellFor(int row);

    /// Has Tab go from the table through the buttons of its rows.
    void chainCells();
    void refillCells();
    void discardCells();
    void layBarOverRows();
    void hoverAgain();
    void select(int row) const;
    void remove(int row) const;
    bool isKeyUsed(const QKeyEvent& event) const;

    std::unique_ptr<TableModel> rows;
    std::unique_ptr<CellDelegate> delegate;
    std::map<int, MyCell*> cells; // by row
    std::vector<MyCell*> spareCells;
    bool concealed = false;
    bool placing = false;
    bool secondPress = false;
};

} // namespace ui
