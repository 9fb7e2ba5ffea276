// The window of the picker as it opens, stays and closes.
#include "SelectionPresenterFixture.h"

TEST_F(SelectionPresenter, KeepsTheRunningOptionAsLongAsItLives)
{
    start();
    setRunningOnly(true);
    presenter->stopService();
    start();
    EXPECT_TRUE(presenter->showRunningApplications);
    EXPECT_TRUE(controller().showRunningApplicationsOnlyCheckboxOutlet->isChecked());

    presenter = std::make_unique<ui::SelectApplicationsWindowPresenter>();
    EXPECT_FALSE(presenter->showRunningApplications);
}

TEST_F(SelectionPresenter, StoppingClosesTheWindowAndNoLongerFollowsAnything)
{
    start();
    setRunningOnly(true);

    presenter->stopService();
    launch(fakes::runningApplication(1, "org.Zeta", "Zeta"));

    EXPECT_FALSE(controller().isWindowVisible());
    EXPECT_TRUE(fake.dispatchQueues.global.empty());
}

TEST_F(SelectionPresenter, StartedTwiceItFollowsOnce)
{
    start();
    start();
    EXPECT_EQ(countOf("workspace addObserver didLaunch"), 1);
}

TEST_F(SelectionPresenter, ItsEndTakesItsObserversBack)
{
    start();
    setRunningOnly(true);

    presenter.reset();
    launch(fakes::runningApplication(1, "org.Zeta", "Zeta"));

    EXPECT_TRUE(fake.dispatchQueues.global.empty());
    EXPECT_EQ(countOf("workspace removeObserver didLaunch"), 1);
}

TEST_F(SelectionPresenter, ClosedByTheUserItOpensWithANewList)
{
    start();
    controller().window().close();
    install("org.New", "New");

    presenter->focus();
    settle();

    EXPECT_TRUE(controller().isWindowVisible());
    EXPECT_EQ(rows(), (Names{"Calculator", "New", "notes", "Zeta"}));
}

TEST_F(SelectionPresenter, ClosedByTheUserItComputesNoListUntilItOpens)
{
    const auto zeta = fakes::runningApplication(1, "org.Zeta", "Zeta");
    start();
    setRunningOnly(true);
    controller().window().close();

    launch(zeta);
    fake.workspace.terminate(zeta);
    launch(zeta);
    EXPECT_TRUE(fake.dispatchQueues.global.empty());

    presenter->focus();
    settle();
    EXPECT_EQ(rows(), Names{"Zeta"});
    fake.workspace.terminate(zeta);
    settle();
    EXPECT_EQ(rows(), Names{});
}

TEST_F(SelectionPresenter, BroughtForwardWhileOpenItKeepsItsList)
{
    start();
    presenter->focus();
    EXPECT_TRUE(fake.dispatchQueues.global.empty());
}

TEST_F(SelectionPresenter, SettingsThatChangeWhileItIsClosedReloadNothing)
{
    settings().setStartAtLogin(true);
    EXPECT_TRUE(fake.dispatchQueues.global.empty());
}
