#include "ui/views/TableView.h"

#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class TableViewScrollBar : public testing::Test
{
protected:
    TableViewScrollBar()
    {
        table.numberOfRows = [this] { return count; };
        table.resize(200, 160);
        table.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&table));
    }

    void setRows(int wanted)
    {
        count = wanted;
        table.reloadData();
        QCoreApplication::processEvents();
    }

    QRect button(int row)
    {
        const QWidget& found = *ui::viewWithTag(*table.cellAt(row), ui::MyCell::BUTTON_TAG);
        return {found.mapTo(&table, QPoint(0, 0)), found.size()};
    }

    [[nodiscard]] const QScrollBar& bar() const { return *table.verticalScrollBar(); }

    ui::TableView table;
    int count = 0;
};

} // namespace

TEST_F(TableViewScrollBar, MovesNothingOfTheRowsAsItComesAndGoes)
{
    setRows(1);
    ASSERT_FALSE(bar().isVisible());
    const QRect place = button(0);
    setRows(100);
    ASSERT_TRUE(bar().isVisible());
    EXPECT_EQ(button(0), place);
    setRows(2);
    ASSERT_FALSE(bar().isVisible());
    EXPECT_EQ(button(0), place);
}

TEST_F(TableViewScrollBar, TakesTheClicksWhereItLiesOverARow)
{
    setRows(100);
    const QRect place(bar().mapTo(&table, QPoint(0, 0)), bar().size());
    EXPECT_EQ(place.right(), table.rect().right());
    EXPECT_EQ(table.childAt(place.center()), &bar());
}

TEST_F(TableViewScrollBar, LeavesTheButtonsOfTheRowsFree)
{
    setRows(100);
    EXPECT_LT(button(0).right(), bar().mapTo(&table, QPoint(0, 0)).x());
    table.setLayoutDirection(Qt::RightToLeft);
    QCoreApplication::processEvents();
    EXPECT_GT(button(0).left(), bar().mapTo(&table, QPoint(bar().width() - 1, 0)).x());
}

TEST_F(TableViewScrollBar, ComesToItsEndAtTheLastRow)
{
    setRows(100);
    table.scrollToBottom();
    QCoreApplication::processEvents();
    ASSERT_NE(table.cellAt(99), nullptr);
    EXPECT_EQ(bar().value(), bar().maximum());
    EXPECT_EQ(table.cellAt(99)->geometry().bottom(), table.viewport()->rect().bottom());
}
