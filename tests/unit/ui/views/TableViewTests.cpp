#include "qt/Input.h"
#include "qt/ThemedApplication.h"
#include "ui/views/ElidedLabel.h"
#include "ui/views/ImageButtonView.h"
#include "ui/views/TableView.h"

#include <QAccessible>
#include <QLineEdit>
#include <QScrollBar>
#include <QVBoxLayout>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::ThemedEnvironment);

class TableViewTest : public testing::Test
{
protected:
    TableViewTest()
    {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(other);
        layout->addWidget(table);
        other->setFocus();
        table->numberOfRows = [this] { return static_cast<int>(names.size()); };
        table->titleOfRow = [this](int row) { return QString::fromStdString(nameOf(row)); };
        table->fillCell = [this](int row, ui::MyCell& cell) { fill(row, cell); };
        table->onSelect = [this](int row) { selected.push_back(nameOf(row)); };
        table->onDelete = [this](int row) { deleted.push_back(nameOf(row)); };
    }

    std::string nameOf(int row) const { return names.at(static_cast<std::size_t>(row)); }

    void fill(int row, ui::MyCell& cell)
    {
        made.insert(&cell);
        cell.control<ui::ElidedLabel>(ui::MyCell::NAME_TAG)
            .setText(QString::fromStdString(nameOf(row)));
        auto& button = cell.control<ui::ImageButtonView>(ui::MyCell::BUTTON_TAG);
        button.initiate(row, false);
        button.onClick = [this](int id) { pressed.push_back(nameOf(id)); };
    }

    void show(int rows, const QSize& size = QSize(320, 240))
    {
        setRows(rows);
        table->reloadData();
        window.resize(size);
        window.show();
        QCoreApplication::processEvents();
    }

    void setRows(int rows)
    {
        names.clear();
        for (int row = 0; row < rows; ++row) {
            names.push_back("Name " + std::to_string(row));
        }
    }

    std::string shownName(int row) const
    {
        const ui::MyCell* const cell = table->cellAt(row);
        return cell == nullptr
                   ? "no cell"
                   : cell->control<ui::ElidedLabel>(ui::MyCell::NAME_TAG).text().toStdString();
    }

    bool isCoveredByItsCell(int row) const
    {
        const ui::MyCell* const cell = table->cellAt(row);
        return cell != nullptr && cell->isVisible() &&
               cell->geometry() == table->visualRect(table->model()->index(row, 0));
    }

    using Names = std::vector<std::string>;

    QWidget window;
    QLineEdit* other = new QLineEdit(&window);
    ui::TableView* table = new ui::TableView(&window);
    Names names;
    Names selected;
    Names deleted;
    Names pressed;
    std::set<ui::MyCell*> made;
};

} // namespace

TEST_F(TableViewTest, OnlyTheRowsOnTheScreenHaveACell)
{
    show(10000);

    EXPECT_TRUE(isCoveredByItsCell(0));
    EXPECT_EQ(shownName(0), "Name 0");
    EXPECT_EQ(table->cellAt(9999), nullptr);
    EXPECT_LT(made.size(), 20U);
}

TEST_F(TableViewTest, ScrollingUsesTheSameCellsForOtherRows)
{
    show(10000);

    table->scrollToBottom();

    EXPECT_TRUE(isCoveredByItsCell(9999));
    EXPECT_EQ(shownName(9999), "Name 9999");
    EXPECT_EQ(table->cellAt(0), nullptr);
    EXPECT_LT(made.size(), 20U);
}

TEST_F(TableViewTest, AReloadShowsWhatTheRowsAreNow)
{
    show(3);

    names = {"Other"};
    table->reloadData();

    EXPECT_EQ(shownName(0), "Other");
    EXPECT_EQ(table->cellAt(1), nullptr);
    EXPECT_EQ(table->model()->rowCount(), 1);
}

TEST_F(TableViewTest, ALargerWindowGetsMoreCells)
{
    show(100, QSize(320, 120));
    const std::size_t few = made.size();

    window.resize(320, 480);
    QCoreApplication::processEvents();

    EXPECT_GT(made.size(), few);
    for (int row = 0; row < static_cast<int>(made.size()); ++row) {
        EXPECT_TRUE(isCoveredByItsCell(row)) << row;
    }
}

TEST_F(TableViewTest, AClickOnARowChoosesIt)
{
    show(3);

    support::click(*ui::viewWithTag(*table->cellAt(1), ui::MyCell::NAME_TAG));

    EXPECT_EQ(selected, Names{"Name 1"});
    EXPECT_EQ(table->currentRow(), 1);
}

TEST_F(TableViewTest, ADoubleClickChoosesOnce)
{
    show(3);

    support::doubleClick(*table->cellAt(1));

    EXPECT_EQ(selected, Names{"Name 1"});
}

TEST_F(TableViewTest, ADoubleClickDoesNotChooseTheRowThatMovesIn)
{
    show(3);
    table->onSelect = [this](int row) {
        selected.push_back(nameOf(row));
        names.erase(names.begin() + row);
        table->reloadData();
    };

    support::doubleClick(*table->cellAt(1));

    EXPECT_EQ(selected, Names{"Name 1"});
    support::click(*table->cellAt(1));
    EXPECT_EQ(selected, (Names{"Name 1", "Name 2"}));
}

TEST_F(TableViewTest, TheButtonOfARowIsPressedForItAlone)
{
    show(3);

    support::click(*ui::viewWithTag(*table->cellAt(2), ui::MyCell::BUTTON_TAG));

    EXPECT_EQ(pressed, Names{"Name 2"});
    EXPECT_EQ(selected, Names{});
}

TEST_F(TableViewTest, KeysGoAlongTheRowsAndReturnOrSpaceChoose)
{
    show(3);
    table->setFocus();

    support::press(*table, Qt::Key_Return, "\r");
    support::press(*table, Qt::Key_Down);
    support::press(*table, Qt::Key_Space, " ");
    support::press(*table, Qt::Key_Down);
    support::press(*table, Qt::Key_Enter, "\r");

    EXPECT_EQ(selected, (Names{"Name 0", "Name 1", "Name 2"}));
}

TEST_F(TableViewTest, AKeyThatIsHeldDownChoosesOnce)
{
    show(3);
    table->setFocus();

    support::press(*table, Qt::Key_Return, "\r");
    support::press(*table, Qt::Key_Return, "\r", Qt::NoModifier, true);

    EXPECT_EQ(selected, Names{"Name 0"});
}

TEST_F(TableViewTest, DeleteTakesTheCurrentRow)
{
    show(3);
    table->setFocus();
    table->setCurrentRow(1);

    support::press(*table, Qt::Key_Delete);

    EXPECT_EQ(deleted, Names{"Name 1"});
}

TEST_F(TableViewTest, AKeyThatItsListenerUsesDoesNothingElse)
{
    show(3);
    table->setFocus();
    table->onKeyDown = [](const QKeyEvent& event) { return event.key() == Qt::Key_Return; };

    support::press(*table, Qt::Key_Return, "\r");

    EXPECT_EQ(selected, Names{});
}

TEST_F(TableViewTest, ArrowsDoNotChoose)
{
    show(3);
    table->setFocus();

    support::press(*table, Qt::Key_Down);
    support::press(*table, Qt::Key_A, QString(), Qt::ControlModifier);

    EXPECT_EQ(selected, Names{});
}

TEST_F(TableViewTest, AReloadLeavesTheCurrentRowsPlace)
{
    show(5);
    table->setCurrentRow(2);

    names.erase(names.begin() + 2);
    table->reloadData();
    EXPECT_EQ(table->currentRow(), 2);

    setRows(1);
    table->reloadData();
    EXPECT_EQ(table->currentRow(), 0);

    setRows(0);
    table->reloadData();
    EXPECT_EQ(table->currentRow(), -1);
}

TEST_F(TableViewTest, AReloadMovesTheCurrentRowWhereItsOwnerSays)
{
    show(100);
    table->setCurrentRow(2);
    const int before = table->visualRect(table->currentIndex()).top();

    table->reloadData(50);

    EXPECT_EQ(table->currentRow(), 50);
    EXPECT_EQ(table->visualRect(table->currentIndex()).top(), before);
}

TEST_F(TableViewTest, AReloadDoesNotScrollToACurrentRowThatIsOutOfSight)
{
    show(100);
    table->setCurrentRow(0);
    table->verticalScrollBar()->setValue(1000);

    table->reloadData();

    EXPECT_EQ(table->verticalScrollBar()->value(), 1000);
    EXPECT_EQ(table->currentRow(), 0);
}

TEST_F(TableViewTest, KeysThatComeToTheListSeeTheirRow)
{
    show(100);
    table->setCurrentRow(0);
    table->verticalScrollBar()->setValue(1000);

    table->setFocus();

    ASSERT_TRUE(table->hasFocus());
    EXPECT_TRUE(isCoveredByItsCell(0));
}

TEST_F(TableViewTest, TheFirstRowIsCurrentForKeysThatComeToTheList)
{
    show(3);
    EXPECT_EQ(table->currentRow(), -1);

    table->setFocus();

    EXPECT_EQ(table->currentRow(), 0);
}

TEST_F(TableViewTest, TheWheelLeavesTheKeysWhereTheyAre)
{
    EXPECT_EQ(table->focusPolicy() & Qt::WheelFocus & ~Qt::StrongFocus, 0);
}

TEST_F(TableViewTest, AssistiveToolsKnowEveryRowByItsTitle)
{
    show(10000);

    QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(table);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::List);
    ASSERT_EQ(list->childCount(), 10000);
    EXPECT_EQ(list->child(9999)->text(QAccessible::Name), "Name 9999");
    EXPECT_EQ(list->child(9999)->role(), QAccessible::ListItem);
}

TEST_F(TableViewTest, AssistiveToolsChooseARowBySelectingIt)
{
    show(3);

    QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(table);
    QAccessibleInterface* const row = list->child(1);
    ASSERT_NE(row->actionInterface(), nullptr);
    row->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());

    EXPECT_EQ(selected, Names{"Name 1"});
    EXPECT_TRUE(table->selectionModel()->selection().isEmpty());
}

TEST_F(TableViewTest, RowsAreMirroredWithTheirWindow)
{
    window.setLayoutDirection(Qt::RightToLeft);
    show(3);

    const ui::MyCell& cell = *table->cellAt(0);
    EXPECT_GT(
        ui::viewWithTag(cell, ui::MyCell::ICON_TAG)->x(),
        ui::viewWithTag(cell, ui::MyCell::BUTTON_TAG)->x()
    );
}
