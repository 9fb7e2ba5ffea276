// What clicks and keys do in a table.
#include "TableViewTest.h"
#include "qt/Input.h"

#include <QScrollBar>

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
