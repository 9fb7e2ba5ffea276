#include "HelpWindowTest.h"
#include "platform/Fatal.h"
#include "qt/QtEnvironment.h"

#include <QApplication>

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::QtEnvironment<QApplication>);

using HelpWindow = HelpWindowTest;

const fakes::Calls MAIL{
    "workspace openUrl mailto:support@quorvent.example?Subject=Tarvel%20Support"};

} // namespace

TEST_F(HelpWindow, IsLoadedWhenItIsFirstPresented)
{
    EXPECT_FALSE(controller().isWindowLoaded());
    present();
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(window().isActiveWindow());
}

TEST_F(HelpWindow, ShowsThePageOfTheBundle)
{
    present();
    EXPECT_EQ(page().source(), QUrl::fromLocalFile(HELP_PAGE));
    EXPECT_TRUE(page().toPlainText().startsWith("Tarvel Help"));
}

TEST_F(HelpWindow, PresentedTwiceIsTheSameWindowWithThePageThatItHad)
{
    present();
    ui::PanelWindow* const before = &window();
    page().setPlainText("as the user left it");
    fake.bundles.resources.clear();

    present();
    presenter.focus();

    EXPECT_EQ(&window(), before);
    EXPECT_EQ(page().toPlainText(), "as the user left it");
}

TEST_F(HelpWindow, OpensAgainAfterItWasClosed)
{
    present();
    window().close();
    presenter.focus();
    EXPECT_TRUE(window().isVisible());
}

TEST_F(HelpWindow, IsOfTheColourInWhichTheGradientEnds)
{
    present();
    EXPECT_EQ(window().grab().toImage().pixelColor(2, 2), QColor(94, 97, 106));
}

TEST_F(HelpWindow, StaysAboveOrdinaryWindows)
{
    present();
    EXPECT_TRUE(window().windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(HelpWindow, TheButtonBeginsAMessageToTheSupport)
{
    present();
    QTest::mouseClick(window().findChild<QPushButton*>("contactSupportButton"), Qt::LeftButton);
    EXPECT_EQ(fake.calls, MAIL);
}

TEST_F(HelpWindow, ContactSupportDoesNotLookAtTheAnswer)
{
    fake.workspace.failing = true;
    presenter.contactSupport();
    EXPECT_EQ(fake.calls, MAIL);
}

TEST_F(HelpWindow, TheButtonOfAControllerWithoutAListenerDoesNothing)
{
    controller().contactSupportButtonClick();
    EXPECT_TRUE(fake.calls.empty());
}

TEST_F(HelpWindow, ThePageHasTheKeyboardFirstAndEscapeCloses)
{
    present();
    EXPECT_EQ(window().focusWidget(), &page());
    QTest::keyClick(window().windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(window().isVisible());
}

using HelpWindowDeathTest = HelpWindowTest;

TEST_F(HelpWindowDeathTest, AMissingPageEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    fake.bundles.resources.clear();
    EXPECT_DEATH(presenter.present(), "the help page is missing");
}
