#include "PopoverTest.h"

#include <QMessageBox>

namespace {

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::ThemedEnvironment);

class PopoverInterfacePresenter : public PopoverTest
{
protected:
    using Lines = std::vector<std::string>;

    void showContent(const std::string& applications = BOTH)
    {
        startWith(PASSWORD, applications);
        open();
        unlock();
        fake.log.lines.clear();
        takeCalls();
    }

    void clickActive() { controller().activateApplicationCheckboxOutlet->click(); }

    void clickLogin() { controller().startAtLoginCheckboxOutlet->click(); }

    static QMessageBox* shownAlert()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* const alert = qobject_cast<QMessageBox*>(widget);
            if (alert != nullptr && alert->isVisible()) {
                return alert;
            }
        }
        return nullptr;
    }
};

} // namespace

TEST_F(PopoverInterfacePresenter, HasAControllerAndNoItemBeforeItIsStarted)
{
    EXPECT_NE(presenter->popoverViewController, nullptr);
    EXPECT_EQ(presenter->popupSystem, nullptr);
    EXPECT_EQ(fake.statusBar.item, nullptr);
    EXPECT_EQ(
        &presenter->configurationAndPreferencesService,
        &storage::ConfigurationAndPreferencesService::sharedInstance()
    );
}

TEST_F(PopoverInterfacePresenter, StartingCopiesTheSettings)
{
    store("Active", "0");
    store("LoginStart", "1");
    startWith(PASSWORD, BOTH);
    EXPECT_FALSE(controller().applicationIsActive);
    EXPECT_TRUE(controller().startAtLogin);
    ASSERT_EQ(controller().lockedApplications.size(), 2U);
    EXPECT_EQ(controller().lockedApplications.front()->bundleIdentifier, CALCULATOR);
    EXPECT_FALSE(window().isVisible());
}

TEST_F(PopoverInterfacePresenter, StartingPutsTheItemUpAndThenReadsTheSettingsInTheirOrder)
{
    takeCalls();
    start();
    const fakes::Calls calls = takeCalls();
    auto last = std::find(calls.begin(), calls.end(), "statusBar statusItem");
    ASSERT_NE(last, calls.end());
    for (const char* setting : {"Active", "LoginStart", "Applications"}) {
        const std::string asked = "keychain copyMatching " + fakes::accountOf(setting);
        EXPECT_EQ(std::find(calls.begin(), last, asked), last) << setting << " is read too early";
        last = std::find(last, calls.end(), asked);
        ASSERT_NE(last, calls.end()) << setting << " is not read";
    }
}

TEST_F(PopoverInterfacePresenter, ShowsAndHidesThePopover)
{
    startWith(PASSWORD);
    presenter->showService();
    settle();
    EXPECT_EQ(page(), Page::Password);
    presenter->stopService(); // nothing
    EXPECT_EQ(page(), Page::Password);
    presenter->hideService();
    EXPECT_EQ(page(), Page::None);
    presenter->hideService();
    EXPECT_FALSE(popup().active);
}

TEST_F(PopoverInterfacePresenter, TheRoutesAreThoseOfTheMomentItWasStarted)
{
    startWith(PASSWORD);
    presenter->onAddApplicationsRequest = nullptr;
    presenter->onHelpRequest = [this] { requests.emplace_back("later help"); };
    presenter->onChangePreferencesRequest = nullptr;
    controller().lockAnotherAppMenuButtonClick();
    controller().helpMenuButtonClick();
    controller().changePreferencesMenuButtonClick();
    EXPECT_EQ(requests, (Lines{"add", "help", "preferences"}));
}

TEST_F(PopoverInterfacePresenter, RemovalTakesEveryEntryOfTheApplication)
{
    showContent("org.gnome.Calculator;org.gnome.Mahjongg;org.gnome.Calculator;");
    QTest::mouseClick(&removeButton(0), Qt::LeftButton);
    settle();
    EXPECT_EQ(stored("Applications"), "org.gnome.Mahjongg;");
    EXPECT_EQ(fake.log.lines, Lines{"removeApplicationRequest: Calculator"});
    EXPECT_EQ(rows(), Lines{"Mahjongg"});
}

TEST_F(PopoverInterfacePresenter, RemovingTheLastRowsOneAfterTheOther)
{
    showContent();
    QTest::keyClick(&table(), Qt::Key_Delete);
    settle();
    EXPECT_EQ(rows(), Lines{"Mahjongg"});
    EXPECT_TRUE(table().hasFocus());
    QTest::keyClick(&table(), Qt::Key_Delete);
    settle();
    EXPECT_EQ(stored("Applications"), "");
    EXPECT_TRUE(controller().noItemViewOutlet->isVisible());
}

TEST_F(PopoverInterfacePresenter, EntriesThatAreNotInstalledSurviveARemoval)
{
    showContent("org.example.Gone;org.gnome.Calculator;");
    EXPECT_EQ(rows(), Lines{"Calculator"});
    QTest::mouseClick(&removeButton(0), Qt::LeftButton);
    EXPECT_EQ(stored("Applications"), "org.example.Gone;");
}

TEST_F(PopoverInterfacePresenter, TheActiveSwitchStores)
{
    showContent();
    clickActive();
    EXPECT_EQ(stored("Active"), "0");
    clickActive();
    EXPECT_EQ(stored("Active"), "1");
    EXPECT_EQ(
        fake.log.lines, (Lines{"isActiveConfigurationChanged", "isActiveConfigurationChanged"})
    );
    EXPECT_EQ(page(), Page::Content);
}

TEST_F(PopoverInterfacePresenter, TheLoginSwitchSwitchesTheLoginItemAndThenStores)
{
    showContent();
    clickLogin();
    EXPECT_EQ(fake.loginItems.enabled, std::set<std::string>{"com.quorvent.OlvoHelper"});
    EXPECT_EQ(stored("LoginStart"), "1");
    EXPECT_EQ(fake.log.lines, Lines{"startAtLoginConfigurationChanged"});
    EXPECT_EQ(takeCalls().front(), "loginItems setEnabled com.quorvent.OlvoHelper true");
    clickLogin();
    EXPECT_TRUE(fake.loginItems.enabled.empty());
    EXPECT_EQ(stored("LoginStart"), "0");
}

TEST_F(PopoverInterfacePresenter, AFailedLoginSwitchIsToldAndNotStoredAndLeavesTheSwitch)
{
    showContent();
    fake.loginItems.failing = true;
    clickLogin();
    settle();
    QMessageBox* const alert = shownAlert();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->text(), "There was an error");
    EXPECT_EQ(
        alert->informativeText(),
        "Tarvel could not be added to the login items. You can check your system's security "
        "settings or you can restart your Mac and retry"
    );
    EXPECT_EQ(alert->windowModality(), Qt::ApplicationModal);
    EXPECT_EQ(alert->parentWidget(), nullptr);
    EXPECT_EQ(stored("LoginStart"), "nothing");
    EXPECT_TRUE(controller().startAtLoginCheckboxOutlet->isChecked());
    EXPECT_EQ(controller().startAtLoginLightOutlet->imageName(), "NSStatusAvailable");
    EXPECT_EQ(page(), Page::Content);
    delete alert;
}

TEST_F(PopoverInterfacePresenter, AFailureToTurnItOffHasTheSameText)
{
    store("LoginStart", "1");
    showContent();
    fake.loginItems.failing = true;
    clickLogin();
    settle();
    QMessageBox* const alert = shownAlert();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->text(), "There was an error");
    EXPECT_EQ(stored("LoginStart"), "1");
    EXPECT_FALSE(controller().startAtLoginCheckboxOutlet->isChecked());
    EXPECT_EQ(controller().startAtLoginLightOutlet->imageName(), "NSStatusPartiallyAvailable");
    delete alert;
}

TEST_F(PopoverInterfacePresenter, ASettingsChangeRefreshesTheListAndNotTheSwitches)
{
    showContent(CALCULATOR);
    auto& settings = presenter->configurationAndPreferencesService;
    settings.setApplicationIsActive(false);
    settings.setStartAtLogin(true);
    settings.addLockedApplicationBundleId(MAHJONGG);
    settle();
    EXPECT_EQ(rows(), (Lines{"Calculator", "Mahjongg"}));
    EXPECT_TRUE(controller().activateApplicationCheckboxOutlet->isChecked());
    EXPECT_FALSE(controller().startAtLoginCheckboxOutlet->isChecked());
}

TEST_F(PopoverInterfacePresenter, ASettingsChangeAfterItsEndIsNoBusinessOfIts)
{
    start();
    auto& settings = presenter->configurationAndPreferencesService;
    presenter.reset();
    settings.setApplicationIsActive(true);
    EXPECT_EQ(stored("Active"), "1");
}

TEST_F(PopoverInterfacePresenter, ThePasswordIsNeverLogged)
{
    startWith(PASSWORD, BOTH);
    open();
    enter("wrong");
    unlock();
    for (const std::string& line : fake.log.lines) {
        EXPECT_EQ(line, "Focus");
    }
    EXPECT_TRUE(fake.log.diagnostics.empty());
}
