// Lists that are computed off the main thread, and when they arrive.
#include "SelectionPresenterFixture.h"

#include <thread>
#include <utility>

TEST_F(SelectionPresenter, OfTwoReloadsTheLastDeliveredWinsAndTheTruthFollows)
{
    fake.workspace.running = {fakes::runningApplication(1, "org.Zeta", "Zeta")};
    start();
    controller().lockAdministrativeApplicationsCheckboxOutlet->click(); // installed
    controller().showRunningApplicationsOnlyCheckboxOutlet->click();    // running
    ASSERT_EQ(fake.dispatchQueues.global.size(), 2U);

    std::swap(fake.dispatchQueues.global.front(), fake.dispatchQueues.global.back());
    fake.dispatchQueues.runGlobalTurn();
    fake.dispatchQueues.runMainTurn();
    EXPECT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));

    settle();
    EXPECT_EQ(rows(), Names{"Zeta"});
}

TEST_F(SelectionPresenter, TwoReloadsInOrderNeedNoThird)
{
    start();
    controller().lockAdministrativeApplicationsCheckboxOutlet->click();
    controller().showRunningApplicationsOnlyCheckboxOutlet->click();
    fake.dispatchQueues.runGlobalTurn();
    fake.dispatchQueues.runMainTurn();
    EXPECT_TRUE(fake.dispatchQueues.global.empty());
}

TEST_F(SelectionPresenter, AListThatComesAfterItsEndIsDropped)
{
    presenter->startService();
    fake.dispatchQueues.runGlobalTurn();

    presenter.reset();
    settle();

    presenter = std::make_unique<ui::SelectApplicationsWindowPresenter>();
    presenter->startService();
    presenter.reset(); // while the list is yet to be computed
    settle();
    EXPECT_TRUE(fake.dispatchQueues.main.empty());
}

TEST_F(SelectionPresenter, AListThatComesAfterTheWindowWasClosedIsKept)
{
    presenter->startService();
    presenter->stopService();
    settle();

    EXPECT_FALSE(controller().isWindowVisible());
    EXPECT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));
}

// The list is computed while the main thread changes whatever only it may look at; a thread
// sanitizer watches that the two never meet.
TEST_F(SelectionPresenter, TheListIsComputedFromWhatTheMainThreadTookBefore)
{
    fake.workspace.running = {fakes::runningApplication(1, "org.Zeta", "Zeta")};
    for (const bool runningOnly : {false, true}) {
        start();
        setRunningOnly(runningOnly);
        const Names before = rows();
        presenter->stopService();
        presenter->startService();
        ASSERT_EQ(fake.dispatchQueues.global.size(), 1U);
        const platform::Block compute = std::move(fake.dispatchQueues.global.front());
        fake.dispatchQueues.global.clear();

        std::thread worker(compute);
        fake.workspace.running.push_back(fakes::runningApplication(2, "org.New", "New"));
        settings().addLockedApplicationBundleId("org.Zeta");
        worker.join();
        fake.dispatchQueues.runMainTurn();

        EXPECT_EQ(rows(), before);
        settings().removeLockedApplicationBundleId("org.Zeta");
        fake.workspace.running.pop_back();
        settle();
    }
}
