#include "platform/Fatal.h"
#include "toolkit/ToolTip.h"
#include "ui/views/ElidedLabel.h"
#include "ui/views/ImageButtonView.h"
#include "ui/views/ImageView.h"
#include "ui/views/MyCell.h"

#include <QCoreApplication>
#include <QHelpEvent>

#include <gtest/gtest.h>

TEST(MyCell, HasAnIconANameAndAButtonUnderTheirTags)
{
    const ui::MyCell cell;
    EXPECT_EQ(cell.control<ui::ImageView>(10).objectName(), "applicationIcon");
    EXPECT_EQ(cell.control<ui::ElidedLabel>(100).objectName(), "applicationName");
    EXPECT_EQ(cell.control<ui::ImageButtonView>(1000).objectName(), "rowButton");
}

TEST(MyCell, HasNothingUnderOtherTags)
{
    const ui::MyCell cell;
    EXPECT_EQ(ui::viewWithTag(cell, 11), nullptr);
    EXPECT_EQ(ui::viewWithTag(cell, 0), nullptr);
}

TEST(MyCellDeathTest, AskingForWhatIsNotThereEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const ui::MyCell cell;
    EXPECT_DEATH(cell.control<ui::ImageView>(11), "no control with the tag 11");
    EXPECT_DEATH(cell.control<ui::ImageView>(100), "no control with the tag 100");
}

namespace {

class ElidedLabelTest : public testing::Test
{
protected:
    ElidedLabelTest() { label.resize(120, 24); }

    QString toolTip()
    {
        QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), label.mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(&label, &event);
        return label.toolTip();
    }

    ui::ElidedLabel label;
};

} // namespace

TEST_F(ElidedLabelTest, TakesLessRoomThanItsText)
{
    label.setText("A name that is much longer than the label will ever be");
    EXPECT_LT(label.minimumSizeHint().width(), label.sizeHint().width());
    EXPECT_LE(label.minimumSizeHint().width(), 120);
}

TEST_F(ElidedLabelTest, SaysInItsToolTipWhatDoesNotFit)
{
    label.setText("A <b>name</b> that is much longer than the label will ever be");
    EXPECT_EQ(toolTip(), toolkit::toolTipOf(label.text()));
    label.setText("Names & names that are much longer than the label will ever be");
    EXPECT_EQ(toolTip(), toolkit::toolTipOf(label.text()));
    label.setText("Short");
    EXPECT_EQ(toolTip(), "");
}

TEST_F(ElidedLabelTest, ShowsMarkupAsItIsWritten)
{
    label.setText("<b></b>");
    const QImage written = label.grab().toImage();
    label.setText("");
    EXPECT_NE(label.grab().toImage(), written);
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
}
