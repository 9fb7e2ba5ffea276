#include "GreetingsWindowTest.h"

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::ThemedEnvironment);

using GreetingsWindow = GreetingsWindowTest;

} // namespace

TEST_F(GreetingsWindow, IsNotLoadedBeforeItIsPresented)
{
    EXPECT_FALSE(controller().isWindowLoaded());
}

TEST_F(GreetingsWindow, PresentingBringsItToTheFrontAndMakesItKey)
{
    countRequests();
    present();

    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(window().isActiveWindow());
    EXPECT_EQ(setupRequests + helpRequests, 0);
}

TEST_F(GreetingsWindow, TheButtonsCallWhatTheOwnerHasSet)
{
    countRequests();
    present();

    button("setupPasswordButton").click();
    EXPECT_EQ(setupRequests, 1);
    EXPECT_EQ(helpRequests, 0);

    button("helpButton").click();
    EXPECT_EQ(setupRequests, 1);
    EXPECT_EQ(helpRequests, 1);
}

TEST_F(GreetingsWindow, HelpLeavesItOpen)
{
    countRequests();
    present();
    button("helpButton").click();

    EXPECT_TRUE(window().isVisible());
}

TEST_F(GreetingsWindow, PresentedBeforeTheCallbacksAreSetItHasButtonsThatDoNothing)
{
    present();
    countRequests();

    button("setupPasswordButton").click();
    button("helpButton").click();
    EXPECT_EQ(setupRequests + helpRequests, 0);
    EXPECT_TRUE(window().isVisible());
}

TEST_F(GreetingsWindow, CallbacksThatAreSetLaterReachItWhenItIsPresentedAgain)
{
    present();
    countRequests();
    present();

    button("setupPasswordButton").click();
    EXPECT_EQ(setupRequests, 1);
}

TEST_F(GreetingsWindow, QuitEndsTheProcessWithZeroAtOnce)
{
    const auto item = fake.statusBar.statusItem(platform::STATUS_ITEM_VARIABLE_LENGTH);
    present();
    fake.calls.clear();

    EXPECT_THROW(button("quitButton").click(), fakes::ProcessEnded);
    EXPECT_EQ(fake.calls, fakes::Calls{"processInfo exit 0"});
    EXPECT_TRUE(fake.dispatchQueues.main.empty());
}

TEST_F(GreetingsWindow, StopServiceClosesIt)
{
    present();
    presenter.stopService();

    EXPECT_FALSE(window().isVisible());
}

TEST_F(GreetingsWindow, StopServiceBeforeItWasPresentedDoesNothing)
{
    presenter.stopService();

    EXPECT_FALSE(controller().isWindowLoaded());
}

TEST_F(GreetingsWindow, EscapeClosesItAndQuitsNothing)
{
    present();
    fake.calls.clear();
    QTest::keyClick(&window(), Qt::Key_Escape);

    EXPECT_FALSE(window().isVisible());
    EXPECT_TRUE(fake.calls.empty());
}
