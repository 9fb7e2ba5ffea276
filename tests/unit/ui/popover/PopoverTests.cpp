#include "PopoverTest.h"
#include "ui/popover/Popover.h"
#include "ui/views/Theme.h"

#include <QPointer>
#include <QWindow>

#include <gmock/gmock.h>

namespace {

class Popover : public PopoverTest
{
protected:
    Popover() { startWith(PASSWORD, BOTH); }

    [[nodiscard]] QColor cornerAt(const QPoint& point) const
    {
        QImage picture(window().size(), QImage::Format_ARGB32);
        picture.fill(Qt::transparent);
        window().render(&picture, {}, {}, QWidget::DrawChildren);
        return picture.pixelColor(point);
    }
};

} // namespace

TEST_F(Popover, IsAFramelessToolAboveOrdinaryWindowsAndHoldsNoGrab)
{
    open();
    const Qt::WindowFlags flags = window().windowFlags();
    EXPECT_EQ(flags & Qt::WindowType_Mask, Qt::Tool);
    EXPECT_TRUE(flags.testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(flags.testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_FALSE(flags.testFlag(Qt::X11BypassWindowManagerHint));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(QWidget::keyboardGrabber(), nullptr);
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
}

TEST_F(Popover, IsKeptOutOfListsOfWindowsAtItsItemOnly)
{
    takeCalls();
    open();
    EXPECT_THAT(takeCalls(), testing::Contains("windows excludeFromWindowsMenu"));
    popup().hidePopover();
    fake.statusBar.shown = false;
    takeCalls();
    open();
    EXPECT_THAT(takeCalls(), testing::Not(testing::Contains("windows excludeFromWindowsMenu")));
}

TEST_F(Popover, AppearsBelowItsItem)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    putItemAt({screen.center().x(), 0, 22, 22});
    open();
    EXPECT_EQ(window().y(), 22 + 4);
    EXPECT_NEAR(window().geometry().center().x(), screen.center().x() + 11, 1);
}

TEST_F(Popover, AppearsAtThePointerWhereThePlaceOfTheItemIsNotKnown)
{
    fake.statusBar.frame = std::nullopt;
    QCursor::setPos(300, 10);
    open();
    EXPECT_EQ(window().y(), 10 + 4);
    EXPECT_NEAR(window().geometry().center().x(), 300, 1);
}

TEST_F(Popover, GoesToItsItemAgainAtEveryOpening)
{
    putItemAt({400, 0, 20, 20});
    open();
    const QPoint before = window().pos();
    popup().hidePopover();
    putItemAt({420, 0, 20, 20});
    open();
    EXPECT_EQ(window().pos(), before + QPoint(20, 0));
}

TEST_F(Popover, StaysAtItsItemWhenAPageIsLarger)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    putItemAt({300, screen.bottom() - 19, 20, 20});
    open();
    const int bottom = window().geometry().bottom();
    EXPECT_EQ(bottom, screen.bottom() - 20 - 4);
    gate().view().setMinimumHeight(window().height() + 50);
    settle();
    EXPECT_EQ(window().geometry().bottom(), bottom);
}

TEST_F(Popover, IsActiveWithTheCaretInTheFieldAtEveryOpening)
{
    open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    EXPECT_TRUE(field().hasFocus());
    QWidget other;
    other.show();
    popup().hidePopover();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    EXPECT_TRUE(field().hasFocus());
}

TEST_F(Popover, EscapeClosesItWhoeverHasTheKeyboard)
{
    open();
    QTest::keyClick(&field(), Qt::Key_Escape);
    EXPECT_FALSE(popup().active);
    open();
    unlock();
    QTest::keyClick(&table(), Qt::Key_Escape);
    EXPECT_FALSE(popup().active);
    open();
    unlock();
    QTest::keyClick(controller().startAtLoginCheckboxOutlet.get(), Qt::Key_Escape);
    EXPECT_FALSE(popup().active);
}

TEST_F(Popover, ClosesWhenTheUserGoesToAnotherApplication)
{
    open();
    Q_EMIT
    qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    settle();
    EXPECT_FALSE(popup().active);
    EXPECT_FALSE(window().isVisible());
}

TEST_F(Popover, ClosesOnlyWhenTheToolkitIsDoneWithTheWindow)
{
    open();
    const QPointer<QWindow> native = window().windowHandle();
    Q_EMIT
    qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_FALSE(native.isNull());
    settle();
    EXPECT_TRUE(native.isNull());
}

TEST_F(Popover, AnOpeningAfterTheUserWentElsewhereStays)
{
    open();
    Q_EMIT
    qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    popup().hidePopover();
    open();
    EXPECT_TRUE(popup().active);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(Popover, StaysWhereTheProgramIsActiveAgainInTheSameTurn)
{
    open();
    Q_EMIT
    qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    Q_EMIT
    qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    settle();
    EXPECT_TRUE(popup().active);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(Popover, StaysWhenAWindowOfTheProgramComesInFrontOfIt)
{
    open();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_TRUE(popup().active);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(Popover, AsAWindowClosesInTheSameWays)
{
    fake.statusBar.shown = false;
    open();
    Q_EMIT
    qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    settle();
    EXPECT_FALSE(popup().active);
    EXPECT_FALSE(window().isVisible());
    open();
    window().close();
    EXPECT_FALSE(popup().active);
    EXPECT_FALSE(window().isVisible());
}

TEST_F(Popover, AsAWindowLiesAboveOrdinaryWindowsLikeTheProgramsOthers)
{
    fake.statusBar.shown = false;
    open();
    EXPECT_TRUE(window().windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(Popover, TakesTheKeyboardAfterTheProgramAsAWholeCameForward)
{
    fake.workspace.running = {fakes::runningApplication(7, "com.quorvent.Tarvel", "Tarvel")};
    for (const bool atItem : {true, false}) {
        fake.statusBar.shown = atItem;
        takeCalls();
        open();
        const fakes::Calls calls = takeCalls();
        const auto program = std::find(calls.begin(), calls.end(), "workspace activate 7 2");
        const auto popover = std::find(calls.begin(), calls.end(), "application bringForward");
        EXPECT_LT(program, popover);
        EXPECT_NE(popover, calls.end());
        popup().hidePopover();
    }
}

TEST_F(Popover, HasRoundCornersOnlyWhereTheDesktopBlendsWindows)
{
    open();
    unlock();
    EXPECT_FALSE(window().testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_EQ(cornerAt({0, 0}).alpha(), 255);
    popup().hidePopover();

    fake.windows.blending = true;
    open();
    unlock();
    EXPECT_TRUE(window().testAttribute(Qt::WA_TranslucentBackground));
    const QPoint bottomRight = window().rect().bottomRight();
    for (const QPoint& corner :
         {QPoint(0, 0), QPoint(bottomRight.x(), 0), QPoint(0, bottomRight.y()), bottomRight}) {
        EXPECT_LT(cornerAt(corner).alpha(), 30) << corner.x() << ' ' << corner.y();
    }
    EXPECT_EQ(cornerAt(window().rect().center()).alpha(), 255);
    popup().hidePopover();

    fake.windows.blending = false;
    open();
    EXPECT_FALSE(window().testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_EQ(cornerAt({0, 0}).alpha(), 255);
}

TEST_F(Popover, AtItsItemHasAnOutlineOfWholePixelsAlongEachEdge)
{
    for (const bool blending : {false, true}) {
        fake.windows.blending = blending;
        open();
        const QImage picture = window().grab().toImage();
        const auto line = static_cast<int>(picture.devicePixelRatio());
        const QPoint last(picture.width() - 1, picture.height() - 1);
        const QPoint middle = last / 2;
        for (int depth = 0; depth <= line; ++depth) {
            for (const QPoint& place :
                 {QPoint(depth, middle.y()),
                  QPoint(last.x() - depth, middle.y()),
                  QPoint(middle.x(), depth),
                  QPoint(middle.x(), last.y() - depth)}) {
                EXPECT_EQ(picture.pixelColor(place) == ui::Theme::LINE, depth < line)
                    << place.x() << ' ' << place.y() << " of " << last.x() << ' ' << last.y()
                    << ", blending " << blending;
            }
        }
        popup().hidePopover();
    }
}

TEST_F(Popover, AtItsItemHasAnOutlineThatIsClosedAtTheCorners)
{
    open();
    const QImage picture = window().grab().toImage();
    const QPoint last(picture.width() - 1, picture.height() - 1);
    for (const QPoint& corner : {QPoint(0, 0), QPoint(last.x(), 0), QPoint(0, last.y()), last}) {
        EXPECT_EQ(picture.pixelColor(corner), ui::Theme::LINE) << corner.x() << ' ' << corner.y();
    }
}

TEST_F(Popover, AsAWindowHasTheCornersOfTheDesktopsWindows)
{
    fake.windows.blending = true;
    fake.statusBar.shown = false;
    open();
    EXPECT_FALSE(window().testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_EQ(cornerAt({0, 0}).alpha(), 255);
}
