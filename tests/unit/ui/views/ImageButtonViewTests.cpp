#include "qt/Input.h"
#include "qt/WaitFor.h"
#include "ui/views/ImageButtonView.h"

#include <QEnterEvent>

#include <vector>

#include <gtest/gtest.h>

namespace {

class ImageButtonViewTest : public testing::Test
{
protected:
    ImageButtonViewTest()
    {
        button.initiate(7, false);
        button.onClick = [this](int id) { clicks.push_back(id); };
    }

    void enter()
    {
        QEnterEvent event(QPointF(2, 2), QPointF(2, 2), button.mapToGlobal(QPointF(2, 2)));
        QCoreApplication::sendEvent(&button, &event);
    }

    QVariantAnimation& fade() { return *button.findChild<QVariantAnimation*>(); }

    QTimer& fadeEnd() { return *button.findChild<QTimer*>(); }

    ui::ImageButtonView button;
    std::vector<int> clicks;
};

} // namespace

TEST_F(ImageButtonViewTest, APressGivesItsId)
{
    support::click(button);
    EXPECT_EQ(clicks, std::vector<int>{7});
}

TEST_F(ImageButtonViewTest, AKeyThatIsHeldIsOnePress)
{
    for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        clicks.clear();
        support::press(button, key);
        support::press(button, key, QString(), Qt::NoModifier, true);
        EXPECT_EQ(clicks, std::vector<int>{7}) << key;
    }
}

TEST_F(ImageButtonViewTest, ADoubleClickIsOnePress)
{
    support::doubleClick(button);
    EXPECT_EQ(clicks, std::vector<int>{7});
}

TEST_F(ImageButtonViewTest, ReturnAndSpacePressIt)
{
    support::press(button, Qt::Key_Return, "\r");
    support::press(button, Qt::Key_Space, " ");
    EXPECT_EQ(clicks, (std::vector<int>{7, 7}));
}

TEST_F(ImageButtonViewTest, APressWithoutAListenerIsDropped)
{
    button.onClick = nullptr;
    support::click(button);
    EXPECT_TRUE(clicks.empty());
}

TEST_F(ImageButtonViewTest, OtherButtonsOfTheMouseDoNothing)
{
    QMouseEvent right(
        QEvent::MouseButtonPress,
        QPointF(2, 2),
        button.mapToGlobal(QPointF(2, 2)),
        Qt::RightButton,
        Qt::RightButton,
        Qt::NoModifier
    );
    QCoreApplication::sendEvent(&button, &right);
    EXPECT_TRUE(clicks.empty());
}

TEST_F(ImageButtonViewTest, FadesToThreeTenthsWhenThePointerEntersAndBackAfterAFifthOfASecond)
{
    button.initiate(7, true);
    EXPECT_EQ(button.alphaValue(), 1.0);

    enter();
    EXPECT_EQ(fade().state(), QAbstractAnimation::Running);
    EXPECT_EQ(fadeEnd().interval(), 200);
    EXPECT_TRUE(fadeEnd().isSingleShot());
    ASSERT_TRUE(fadeEnd().isActive());
    fade().setCurrentTime(fade().duration());
    EXPECT_DOUBLE_EQ(button.alphaValue(), 0.3);

    ASSERT_TRUE(support::waitFor([this] { return !fadeEnd().isActive(); }));
    EXPECT_DOUBLE_EQ(fade().endValue().toDouble(), 1.0);
    ASSERT_TRUE(support::waitFor([this] { return button.alphaValue() == 1.0; }));
}

TEST_F(ImageButtonViewTest, IsPaintedAsFaintAsItIsFaded)
{
    button.setImageName("RemoveApplication");
    button.resize(24, 24);
    const QImage full = button.grab().toImage();
    button.startFadeAnimation();
    fade().setCurrentTime(fade().duration());
    EXPECT_NE(button.grab().toImage(), full);
}

TEST_F(ImageButtonViewTest, NeverFadesWhereItIsNotAnimatedButShowsTheArrow)
{
    button.initiate(7, false);
    button.setCursor(Qt::IBeamCursor);
    enter();
    EXPECT_EQ(fade().state(), QAbstractAnimation::Stopped);
    EXPECT_FALSE(fadeEnd().isActive());
    EXPECT_EQ(button.alphaValue(), 1.0);
    EXPECT_EQ(button.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ImageButtonViewTest, ShowsTheArrowWhereItIsAnimatedToo)
{
    button.initiate(7, true);
    button.setCursor(Qt::IBeamCursor);
    enter();
    EXPECT_EQ(button.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ImageButtonViewTest, DoesNotWatchThePointerBeforeItIsInitiated)
{
    ui::ImageButtonView fresh;
    EXPECT_EQ(fresh.id, 0);
    EXPECT_TRUE(fresh.animated);
    QEnterEvent event(QPointF(2, 2), QPointF(2, 2), QPointF(2, 2));
    QCoreApplication::sendEvent(&fresh, &event);
    EXPECT_FALSE(fresh.findChild<QTimer*>()->isActive());
}

TEST_F(ImageButtonViewTest, AnAnswerThatEndsTheListenerIsSafe)
{
    button.onClick = [this](int id) {
        button.onClick = nullptr;
        clicks.push_back(id);
    };
    support::click(button);
    support::click(button);
    EXPECT_EQ(clicks, std::vector<int>{7});
}

TEST_F(ImageButtonViewTest, ShowsWhereTheKeysAre)
{
    button.resize(24, 24);
    button.show();
    button.activateWindow();
    const QImage without = button.grab().toImage();
    button.setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(support::waitFor([this] { return button.hasFocus(); }));
    EXPECT_NE(button.grab().toImage(), without);
}
