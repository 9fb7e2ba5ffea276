// What the picker lists.
#include "SelectionPresenterFixture.h"

#include <QLabel>

TEST_F(SelectionPresenter, ShowsTheWindowAtOnceAndTheListWhenItIsThere)
{
    presenter->startService();
    EXPECT_TRUE(controller().isWindowVisible());
    EXPECT_EQ(rows(), Names{});
    EXPECT_EQ(fake.dispatchQueues.global.size(), 1U);

    fake.dispatchQueues.runGlobalTurn();
    EXPECT_EQ(rows(), Names{});
    fake.dispatchQueues.runMainTurn();
    EXPECT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));
}

TEST_F(SelectionPresenter, ShowsTheOptionsAsTheyAre)
{
    settings().setLockAdministrativeApplications(false);
    start();
    EXPECT_FALSE(controller().lockAdministrativeApplicationsCheckboxOutlet->isChecked());
    EXPECT_FALSE(controller().showRunningApplicationsOnlyCheckboxOutlet->isChecked());
}

TEST_F(SelectionPresenter, LeavesOutWhatIsProtectedAlready)
{
    settings().addLockedApplicationBundleId("org.Notes");
    start();
    EXPECT_EQ(rows(), (Names{"Calculator", "Zeta"}));
}

TEST_F(SelectionPresenter, ComparesIdentifiersExactly)
{
    settings().addLockedApplicationBundleId("org.notes");
    start();
    EXPECT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));
}

TEST_F(SelectionPresenter, NeverListsAdministrativeApplicationsWhileTheyAreLockedAsAGroup)
{
    installAdministrative();
    start();
    EXPECT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));
}

TEST_F(SelectionPresenter, ListsAdministrativeApplicationsWhileTheyAreNotUnlessLockedOneByOne)
{
    installAdministrative();
    settings().addLockedApplicationBundleId("com.apple.ActivityMonitor");
    start();

    controller().lockAdministrativeApplicationsCheckboxOutlet->click();
    settle();
    EXPECT_EQ(rows(), (Names{"Calculator", "Keychain Access", "notes", "Terminal", "Zeta"}));
    EXPECT_FALSE(settings().getLockAdministrativeApplications());

    controller().lockAdministrativeApplicationsCheckboxOutlet->click();
    settle();
    EXPECT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));
    EXPECT_TRUE(settings().getLockAdministrativeApplications());
}

TEST_F(SelectionPresenter, CountsWhateverPlaysTheRoleAsAdministrative)
{
    install("xterm", "XTerm");
    fake.workspace.roles["xterm"] = "com.apple.Terminal";
    start();
    EXPECT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));

    controller().lockAdministrativeApplicationsCheckboxOutlet->click();
    settle();
    EXPECT_EQ(rows(), (Names{"Calculator", "notes", "XTerm", "Zeta"}));
}

TEST_F(SelectionPresenter, RunningApplicationsAreListedOnDemand)
{
    auto background = fakes::runningApplication(3, "org.Daemon", "Daemon");
    background.activationPolicy = platform::ActivationPolicy::Prohibited;
    fake.workspace.running = {
        fakes::runningApplication(1, "org.Zeta", "Zeta"),
        fakes::runningAccessory(2, "org.Menu", "Menu"),
        background};
    start();

    setRunningOnly(true);
    EXPECT_EQ(rows(), (Names{"Menu", "Zeta"}));
    setRunningOnly(false);
    EXPECT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));
}

TEST_F(SelectionPresenter, TheRunningListFollowsWhatStartsAndEnds)
{
    const auto zeta = fakes::runningApplication(1, "org.Zeta", "Zeta");
    const auto menu = fakes::runningAccessory(2, "org.Menu", "Menu");
    start();
    setRunningOnly(true);
    EXPECT_EQ(rows(), Names{});

    launch(zeta);
    settle();
    EXPECT_EQ(rows(), Names{"Zeta"});
    launch(menu);
    settle();
    EXPECT_EQ(rows(), (Names{"Menu", "Zeta"}));
    fake.workspace.terminate(zeta);
    settle();
    EXPECT_EQ(rows(), Names{"Menu"});
}

TEST_F(SelectionPresenter, TheInstalledListDoesNotCareForWhatStartsAndEnds)
{
    const auto zeta = fakes::runningApplication(1, "org.Zeta", "Zeta");
    start();

    launch(zeta);
    fake.workspace.terminate(zeta);

    EXPECT_TRUE(fake.dispatchQueues.global.empty());
}

TEST_F(SelectionPresenter, AnApplicationThatIsNoLongerProtectedComesBack)
{
    settings().addLockedApplicationBundleId("org.Notes");
    start();

    settings().removeLockedApplicationBundleId("org.Notes");
    settle();

    EXPECT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));
}

TEST_F(SelectionPresenter, SaysThatEverythingIsProtected)
{
    for (const char* identifier : {"org.Calculator", "org.Notes", "org.Zeta"}) {
        settings().addLockedApplicationBundleId(identifier);
    }
    start();
    const auto* const heading = controller().window().findChild<QLabel*>("emptyHeadingLabel");
    EXPECT_EQ(heading->text(), "Everything here is protected");
    EXPECT_TRUE(heading->isVisible());

    setRunningOnly(true);
    EXPECT_EQ(heading->text(), "No application is running");
    launch(fakes::runningApplication(1, "org.Zeta", "Zeta"));
    settle();
    EXPECT_EQ(heading->text(), "Everything that runs is protected");
}
