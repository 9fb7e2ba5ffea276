#include "qt/Input.h"
#include "ui/views/SwitchView.h"

#include <QAccessible>

#include <gtest/gtest.h>

namespace {

class SwitchViewTest : public testing::Test
{
protected:
    SwitchViewTest()
    {
        view.setText("Protection");
        view.resize(view.sizeHint());
    }

    QImage picture() { return view.grab().toImage(); }

    ui::SwitchView view;
};

} // namespace

TEST_F(SwitchViewTest, AClickAnywhereOnItSwitches)
{
    support::click(view, QPoint(2, 2));
    EXPECT_TRUE(view.isChecked());
    support::click(view, QPoint(view.width() - 2, view.height() - 2));
    EXPECT_FALSE(view.isChecked());
}

TEST_F(SwitchViewTest, SpaceSwitches)
{
    support::press(view, Qt::Key_Space, " ");
    EXPECT_TRUE(view.isChecked());
}

TEST_F(SwitchViewTest, LooksDifferentWhenItIsOnWhereItHasTheKeysAndWhereItIsDisabled)
{
    const QImage off = picture();
    view.setChecked(true);
    const QImage on = picture();
    view.setEnabled(false);
    EXPECT_NE(on, off);
    EXPECT_NE(picture(), on);
}

TEST_F(SwitchViewTest, TheKnobMovesSoThatItIsNotToldByColourAlone)
{
    const QPoint left(18, view.height() / 2);
    const QPoint right(32, view.height() / 2);
    const QImage off = picture();
    view.setChecked(true);
    const QImage on = picture();
    EXPECT_GT(off.pixelColor(left).lightness(), off.pixelColor(right).lightness());
    EXPECT_LT(on.pixelColor(left).lightness(), on.pixelColor(right).lightness());
}

TEST_F(SwitchViewTest, IsMirroredWhereTextRunsFromRightToLeft)
{
    view.setLayoutDirection(Qt::RightToLeft);
    const QPoint left(view.width() - 32, view.height() / 2);
    const QPoint right(view.width() - 18, view.height() / 2);
    const QImage off = picture();
    view.setChecked(true);
    const QImage on = picture();
    EXPECT_LT(off.pixelColor(left).lightness(), off.pixelColor(right).lightness());
    EXPECT_GT(on.pixelColor(left).lightness(), on.pixelColor(right).lightness());
}

TEST_F(SwitchViewTest, HasRoomForItsText)
{
    const int shorter = view.sizeHint().width();
    view.setText("Protection is active");
    EXPECT_GT(view.sizeHint().width(), shorter);
    EXPECT_EQ(view.minimumSizeHint(), view.sizeHint());
}

TEST_F(SwitchViewTest, AssistiveToolsKnowWhatItIsAndHowItStands)
{
    view.setText("&Protection is active");
    view.setChecked(true);
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&view);
    EXPECT_EQ(accessible->role(), QAccessible::CheckBox);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Protection is active");
    EXPECT_TRUE(accessible->state().checked);
}
