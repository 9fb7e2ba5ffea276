// What a user sees of the greeting, and how the keyboard goes through it.
#include "GreetingsWindowTest.h"

#include <QFrame>
#include <QLabel>

namespace {

using GreetingsWindowForm = GreetingsWindowTest;

} // namespace

TEST_F(GreetingsWindowForm, TheOutletIsTheLineOfItsColour)
{
    present();
    QFrame& line = *controller().lineViewOutlet;
    EXPECT_EQ(line.objectName(), "lineViewOutlet");
    EXPECT_EQ(line.height(), 1);

    const QImage picture = window().grab().toImage();
    const QPoint middle = line.mapTo(&window(), line.rect().center());
    EXPECT_EQ(picture.pixelColor(middle), QColor(99, 102, 108));
    EXPECT_NE(picture.pixelColor(middle + QPoint(0, 2)), QColor(99, 102, 108));
}

TEST_F(GreetingsWindowForm, TheLinksEndWhereTheLineDoes)
{
    constexpr int INSIDE = 8; // from the edge of a link to its text
    present();
    const QFrame& line = *controller().lineViewOutlet;
    const QRect help = button("helpButton").geometry();
    const QRect quit = button("quitButton").geometry();
    EXPECT_EQ(help.left() + INSIDE, line.geometry().left());
    EXPECT_EQ(quit.right() - INSIDE, line.geometry().right());
}

TEST_F(GreetingsWindowForm, StaysAboveOrdinaryWindows)
{
    present();
    EXPECT_TRUE(window().windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(GreetingsWindowForm, ReturnSetsUpAPasswordAndTabLeadsOn)
{
    countRequests();
    present();
    EXPECT_EQ(QApplication::focusWidget(), &button("setupPasswordButton"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(setupRequests, 1);

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &button("helpButton"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(helpRequests, 1);

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &button("quitButton"));
}

TEST_F(GreetingsWindowForm, TheDefaultButtonStaysTheOnlyOneWhoeverHasTheKeyboard)
{
    present();
    for (const char* name : {"helpButton", "quitButton", "setupPasswordButton", "helpButton"}) {
        button(name).setFocus();
        EXPECT_TRUE(button("setupPasswordButton").isDefault()) << name;
        EXPECT_FALSE(button("helpButton").isDefault()) << name;
        EXPECT_FALSE(button("quitButton").isDefault()) << name;
    }
}

TEST_F(GreetingsWindowForm, IsMirroredWhereTextRunsFromRightToLeft)
{
    present();
    EXPECT_LT(button("helpButton").x(), button("quitButton").x());
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QCoreApplication::processEvents();
    EXPECT_GT(button("helpButton").x(), button("quitButton").x());
}
