#include "fakes/Applications.h"
#include "fakes/FakePlatform.h"
#include "qt/Input.h"
#include "storage/ConfigurationAndPreferencesService.h"
#include "ui/windows/selection/SelectApplicationsWindowPresenter.h"

#include <QApplication>

#include <algorithm>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

class SelectionPresenter : public testing::Test
{
protected:
    SelectionPresenter()
    {
        fake.fileManager.folders["/Applications"] = {};
        install("org.Calculator", "Calculator");
        install("org.Notes", "notes");
        install("org.Zeta", "Zeta");
    }

    void install(const std::string& identifier, const std::string& name)
    {
        fakes::installApplication(fake, identifier, name);
        fake.fileManager.folders["/Applications"].insert(
            fake.fileManager.folders["/Applications"].begin(), identifier + ".app"
        );
    }

    void installAdministrative()
    {
        install("com.apple.Terminal", "Terminal");
        install("com.apple.ActivityMonitor", "Activity Monitor");
        install("com.apple.keychainaccess", "Keychain Access");
    }

    void start()
    {
        presenter->startService();
        settle();
    }

    void settle() { fake.dispatchQueues.runAll(); }

    ui::ApplicationsSelectWindowController& controller()
    {
        return *presenter->applicationsSelectWindowController;
    }

    Names rows()
    {
        Names names;
        for (const applications::ApplicationEntityPtr& row :
             controller().filteredApplicationEntities) {
            names.push_back(row->name);
        }
        return names;
    }

    void choose(const std::string& name)
    {
        const Names names = rows();
        const auto found = std::find(names.begin(), names.end(), name);
        ASSERT_NE(found, names.end()) << name;
        controller().applicationsTableViewOutlet->onSelect(static_cast<int>(found - names.begin()));
    }

    void setRunningOnly(bool isOn)
    {
        if (controller().showRunningApplicationsOnlyCheckboxOutlet->isChecked() != isOn) {
            controller().showRunningApplicationsOnlyCheckboxOutlet->click();
        }
        settle();
    }

    void launch(const platform::RunningApplication& application)
    {
        fake.workspace.startLaunching(application);
        fake.workspace.finishLaunching(application);
    }

    int countOf(const std::string& call) const
    {
        return static_cast<int>(std::count(fake.calls.begin(), fake.calls.end(), call));
    }

    static storage::ConfigurationAndPreferencesService& settings()
    {
        return storage::ConfigurationAndPreferencesService::sharedInstance();
    }

    fakes::FakePlatform fake;
    std::unique_ptr<ui::SelectApplicationsWindowPresenter> presenter =
        std::make_unique<ui::SelectApplicationsWindowPresenter>();
};

} // namespace

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

TEST_F(SelectionPresenter, AChosenApplicationIsProtectedAndDropsOutOfTheList)
{
    start();
    const auto notices = std::make_shared<int>(0); // the settings keep their listeners
    settings().addOnConfigurationChangeEvent([notices] { ++*notices; });

    choose("notes");
    EXPECT_EQ(settings().getLockedApplicationsBundleIds(), Names{"org.Notes"});
    EXPECT_EQ(*notices, 1);
    EXPECT_EQ(fake.dispatchQueues.global.size(), 1U);
    settle();

    EXPECT_EQ(rows(), (Names{"Calculator", "Zeta"}));
    EXPECT_TRUE(controller().isWindowVisible());
}

TEST_F(SelectionPresenter, TheFilterIsKeptWhenAChosenApplicationDropsOut)
{
    start();
    support::type(controller().window(), "t");
    ASSERT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));
    support::type(controller().window(), "e");
    ASSERT_EQ(rows(), Names{"notes"});

    choose("notes");
    settle();

    EXPECT_EQ(rows(), Names{});
    EXPECT_EQ(controller().filterTextfieldOutlet->stringValue(), "te");
}

TEST_F(SelectionPresenter, SeveralAreChosenOneAfterTheOther)
{
    start();
    choose("Calculator");
    choose("Zeta");
    settle();

    EXPECT_EQ(rows(), Names{"notes"});
    EXPECT_EQ(settings().getLockedApplicationsBundleIds(), (Names{"org.Calculator", "org.Zeta"}));
}

TEST_F(SelectionPresenter, ChoosingTheSameTwiceBeforeTheListIsNewProtectsItOnce)
{
    start();
    choose("notes");
    choose("notes");
    settle();
    EXPECT_EQ(settings().getLockedApplicationsBundleIds(), Names{"org.Notes"});
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

TEST_F(SelectionPresenter, AnApplicationFromElsewhereIsChosenWhileItRuns)
{
    fake.workspace.running = {fakes::runningApplication(1, "org.Elsewhere", "Elsewhere")};
    start();
    EXPECT_EQ(rows(), (Names{"Calculator", "notes", "Zeta"}));

    setRunningOnly(true);
    choose("Elsewhere");
    settle();

    EXPECT_EQ(settings().getLockedApplicationsBundleIds(), Names{"org.Elsewhere"});
    EXPECT_EQ(rows(), Names{});
}

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

TEST_F(SelectionPresenter, BroughtForwardWhileOpenItKeepsItsList)
{
    start();
    presenter->focus();
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

TEST_F(SelectionPresenter, SettingsThatChangeWhileItIsClosedReloadNothing)
{
    settings().setStartAtLogin(true);
    EXPECT_TRUE(fake.dispatchQueues.global.empty());
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
