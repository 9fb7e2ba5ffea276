#include "LockWindowTest.h"
#include "qt/WaitFor.h"

#include <QSequentialAnimationGroup>

namespace {

class BounceAnimation : public LockWindowTest
{
protected:
    BounceAnimation()
    {
        show();
        resting = central().y();
    }

    [[nodiscard]] QWidget& central() const { return outlet("centralViewOutlet"); }

    [[nodiscard]] QSequentialAnimationGroup& animation() const
    {
        return *central().findChild<QSequentialAnimationGroup*>("position");
    }

    void bounce()
    {
        controller->displayErrorMessage("");
        fake.dispatchQueues.runAll();
    }

    /// How far the view is from its resting place at that time.
    int offsetAt(int milliseconds)
    {
        animation().setCurrentTime(milliseconds);
        return central().y() - resting;
    }

    int resting = 0;
};

} // namespace

TEST_F(BounceAnimation, MovesFromZeroToTwentyAndBackTwiceATenthOfASecondEachWay)
{
    bounce();
    EXPECT_EQ(animation().totalDuration(), 400);
    std::vector<int> offsets;
    for (const int time : {0, 100, 200, 300, 400}) {
        offsets.push_back(offsetAt(time));
    }
    EXPECT_EQ(offsets, (std::vector{0, 20, 0, 20, 0}));
    EXPECT_EQ(animation().state(), QAbstractAnimation::Stopped);
}

TEST_F(BounceAnimation, EasesInAndOut)
{
    bounce();
    const int early = offsetAt(25);
    const int middle = offsetAt(50);
    const int late = offsetAt(75);

    EXPECT_LT(early, 5); // a steady movement would be at 5
    EXPECT_EQ(middle, 10);
    EXPECT_GT(late, 15);
}

TEST_F(BounceAnimation, StartsWithTheErrorOnTheMainQueue)
{
    controller->displayErrorMessage("");
    EXPECT_EQ(animation().state(), QAbstractAnimation::Stopped);
    fake.dispatchQueues.runMainTurn();

    EXPECT_EQ(animation().state(), QAbstractAnimation::Running);
}

TEST_F(BounceAnimation, RunsByItselfAndEndsWhereItStarted)
{
    bounce();
    ASSERT_TRUE(support::waitFor([this] {
        return animation().state() == QAbstractAnimation::Stopped;
    }));

    EXPECT_EQ(central().y(), resting);
}

TEST_F(BounceAnimation, StartingAgainReplacesTheOneThatRuns)
{
    bounce();
    EXPECT_EQ(offsetAt(100), 20);
    bounce();
    EXPECT_EQ(central().findChildren<QSequentialAnimationGroup*>("position").size(), 1);
    EXPECT_EQ(animation().currentTime(), 0);
    EXPECT_EQ(central().y(), resting);
    EXPECT_EQ(offsetAt(100), 20);
    EXPECT_EQ(offsetAt(400), 0);
}

TEST_F(BounceAnimation, EndsWhereTheLayoutWantsTheViewAfterTheLayoutChanged)
{
    bounce();
    EXPECT_EQ(offsetAt(100), 20);
    controller->showServiceWindow(std::string(200, 'M') + " is locked", nullptr);
    fake.dispatchQueues.runAll();
    QCoreApplication::processEvents();
    animation().setCurrentTime(400);

    const QRect place = central().geometry();
    EXPECT_NEAR(place.center().y(), window().rect().center().y(), 1);
}

TEST_F(BounceAnimation, IsDeeperOnALargerScreenInProportion)
{
    showOn(3840, 2160);
    resting = central().y();
    bounce();

    EXPECT_EQ(offsetAt(100), 40);
    EXPECT_EQ(offsetAt(400), 0);
}

TEST_F(BounceAnimation, TheControllerMayGoInTheMiddle)
{
    bounce();
    offsetAt(50);
    controller.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
}
