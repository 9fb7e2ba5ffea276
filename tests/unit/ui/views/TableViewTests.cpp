// The rows of a table: their cells, reloads, and what assistive tools know of them.
#include "TableViewTest.h"
#include "qt/Input.h"
#include "qt/ThemedApplication.h"

#include <QAccessible>
#include <QScrollBar>

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::ThemedEnvironment);

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

TEST_F(TableViewTest, ConcealedItHasNoRowsAndNoCells)
{
    show(3);
    table->setConcealed(true);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(table)->childCount(), 0);
    EXPECT_TRUE(table->findChildren<ui::MyCell*>().isEmpty());
    EXPECT_EQ(table->cellAt(0), nullptr);

    setRows(4);
    table->reloadData();
    window.resize(400, 400);
    QCoreApplication::processEvents();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(table)->childCount(), 0);
    EXPECT_TRUE(table->findChildren<ui::MyCell*>().isEmpty());

    table->setConcealed(false);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(table)->childCount(), 4);
    ASSERT_NE(table->cellAt(3), nullptr);
    EXPECT_TRUE(table->cellAt(3)->isVisible());
}

TEST_F(TableViewTest, IsConcealedByTheButtonOfARowToo)
{
    show(3);
    auto& button = table->cellAt(1)->control<ui::ImageButtonView>(ui::MyCell::BUTTON_TAG);
    button.onClick = [this](int /*id*/) { table->setConcealed(true); };
    support::click(button);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(table->findChildren<ui::MyCell*>().isEmpty());
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
