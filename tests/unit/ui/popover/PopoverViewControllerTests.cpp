#include "PopoverTest.h"
#include "toolkit/ToolTip.h"

namespace {

class PopoverViewController : public PopoverTest
{
protected:
    using Names = std::vector<std::string>;

    void showContent(const std::string& applications)
    {
        startWith(PASSWORD, applications);
        open();
        unlock();
    }

    static std::vector<applications::ApplicationEntityPtr> entities(const Names& names)
    {
        std::vector<applications::ApplicationEntityPtr> result;
        for (const std::string& name : names) {
            result.push_back(
                std::make_shared<applications::ApplicationEntity>(name, "id." + name, nullptr)
            );
        }
        return result;
    }

    /// Counts what the controller reports, in place of the presenter.
    void listen()
    {
        controller().onRemoveApplicationRequest =
            [this](const applications::ApplicationEntityPtr& application) {
                reports.push_back("remove " + application->bundleIdentifier);
            };
        controller().onIsActiveConfigurationChanged = [this](bool on) {
            reports.emplace_back(on ? "active on" : "active off");
            lightAtReport = controller().activateApplicationLightOutlet->imageName();
        };
        controller().onStartAtLoginConfigurationChanged = [this](bool on) {
            reports.emplace_back(on ? "login on" : "login off");
            lightAtReport = controller().startAtLoginLightOutlet->imageName();
        };
    }

    Names reports;
    QString lightAtReport;
};

constexpr auto GREEN = "NSStatusAvailable";
constexpr auto YELLOW = "NSStatusPartiallyAvailable";

} // namespace

TEST_F(PopoverViewController, InitialDataIsStoredAndShownWhenTheViewLoads)
{
    ui::PopoverViewController alone;
    alone.initiateData(true, false, entities({"One", "Two"}));
    EXPECT_FALSE(alone.isViewLoaded());
    alone.view();
    EXPECT_TRUE(alone.activateApplicationCheckboxOutlet->isChecked());
    EXPECT_FALSE(alone.startAtLoginCheckboxOutlet->isChecked());
    EXPECT_EQ(alone.activateApplicationLightOutlet->imageName(), GREEN);
    EXPECT_EQ(alone.startAtLoginLightOutlet->imageName(), YELLOW);
    EXPECT_EQ(alone.applicationsTableViewOutlet->numberOfRows(), 2);

    alone.initiateData(false, true, {}); // no display update
    EXPECT_TRUE(alone.activateApplicationCheckboxOutlet->isChecked());
    EXPECT_EQ(alone.applicationsTableViewOutlet->model()->rowCount(), 2);
}

TEST_F(PopoverViewController, ARefreshBeforeTheViewIsLoadedOnlyStores)
{
    ui::PopoverViewController alone;
    alone.refreshLockedApplicationsAndInterface(entities({"One"}));
    alone.wrongPassword();
    EXPECT_FALSE(alone.isViewLoaded());
    EXPECT_EQ(alone.lockedApplications.size(), 1U);
}

TEST_F(PopoverViewController, ARowShowsIconNameAndButton)
{
    showContent(CALCULATOR);
    const ui::MyCell& cell = *table().cellAt(0);
    EXPECT_EQ(cell.control<QLabel>(100).text(), "Calculator");
    auto& remove = cell.control<ui::ImageButtonView>(1000);
    EXPECT_EQ(remove.id, 0);
    EXPECT_TRUE(remove.animated);
    EXPECT_TRUE(remove.accessibleName().contains("Calculator"));
    EXPECT_EQ(remove.toolTip(), toolkit::toolTipOf("Stop protecting Calculator"));
    EXPECT_NE(ui::viewWithTag(cell, 10), nullptr);
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, QPoint(60, 10));
    QTest::keyClick(&table(), Qt::Key_Space);
    EXPECT_FALSE(table().selectionModel()->hasSelection());
}

TEST_F(PopoverViewController, TheButtonOfARowAsksToRemoveItsApplication)
{
    showContent(BOTH);
    listen();
    QTest::mouseClick(&removeButton(1), Qt::LeftButton);
    QTest::keyClick(&removeButton(0), Qt::Key_Space);
    EXPECT_EQ(reports, (Names{"remove org.gnome.Mahjongg", "remove org.gnome.Calculator"}));
}

TEST_F(PopoverViewController, ARowThatIsGoneIsNotRemoved)
{
    showContent(BOTH);
    listen();
    controller().lockedApplications.pop_back();
    removeButton(1).onClick(1);
    removeButton(1).onClick(7);
    EXPECT_EQ(reports, Names());
}

TEST_F(PopoverViewController, TheKeyDeleteAsksToRemoveTheCurrentRow)
{
    showContent(BOTH);
    listen();
    ASSERT_TRUE(table().hasFocus());
    QTest::keyClick(&table(), Qt::Key_Down);
    QTest::keyClick(&table(), Qt::Key_Delete);
    EXPECT_EQ(reports, Names{"remove org.gnome.Mahjongg"});
}

TEST_F(PopoverViewController, TabGoesFromTheListThroughItsButtonsToTheSwitches)
{
    showContent(BOTH);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    std::vector<const QWidget*> reached;
    controller().addApplicationButtonOutlet->setFocus();
    for (int step = 0; step < 7; ++step) {
        reached.push_back(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(
        reached,
        (std::vector<const QWidget*>{
            controller().addApplicationButtonOutlet.get(),
            controller().menuButtonOutlet.get(),
            &table(),
            &removeButton(0),
            &removeButton(1),
            controller().activateApplicationCheckboxOutlet.get(),
            controller().startAtLoginCheckboxOutlet.get()})
    );
}

TEST_F(PopoverViewController, AnEmptyListShowsTheEmptyViewUntilTheFirstApplicationComes)
{
    showContent("");
    EXPECT_TRUE(controller().noItemViewOutlet->isVisible());
    EXPECT_TRUE(controller().addApplicationButtonOutlet->hasFocus());
    presenter->configurationAndPreferencesService.addLockedApplicationBundleId(CALCULATOR);
    settle();
    EXPECT_FALSE(controller().noItemViewOutlet->isVisible());
    EXPECT_EQ(rows(), Names{"Calculator"});
    presenter->configurationAndPreferencesService.removeLockedApplicationBundleId(CALCULATOR);
    settle();
    EXPECT_TRUE(controller().noItemViewOutlet->isVisible());
    EXPECT_EQ(rows(), Names());
}

TEST_F(PopoverViewController, TheAddButtonAsksForMore)
{
    showContent(BOTH);
    EXPECT_EQ(controller().addApplicationButtonOutlet->id, 0);
    EXPECT_TRUE(controller().addApplicationButtonOutlet->animated);
    EXPECT_TRUE(controller().menuButtonOutlet->animated);
    QTest::mouseClick(controller().addApplicationButtonOutlet.get(), Qt::LeftButton);
    EXPECT_EQ(requests, Names{"add"});
}

TEST_F(PopoverViewController, ASwitchTurnsItsLightFirstAndThenReports)
{
    showContent(BOTH);
    listen();
    QTest::mouseClick(controller().activateApplicationCheckboxOutlet.get(), Qt::LeftButton);
    EXPECT_EQ(lightAtReport, YELLOW);
    QTest::keyClick(controller().activateApplicationCheckboxOutlet.get(), Qt::Key_Space);
    EXPECT_EQ(lightAtReport, GREEN);
    QTest::mouseClick(controller().startAtLoginCheckboxOutlet.get(), Qt::LeftButton);
    EXPECT_EQ(lightAtReport, GREEN);
    QTest::mouseClick(controller().startAtLoginCheckboxOutlet.get(), Qt::LeftButton);
    EXPECT_EQ(lightAtReport, YELLOW);
    EXPECT_EQ(reports, (Names{"active off", "active on", "login on", "login off"}));
}

TEST_F(PopoverViewController, WithoutListenersASwitchStillTurnsItsLight)
{
    showContent(BOTH);
    controller().onIsActiveConfigurationChanged = nullptr;
    controller().activateApplicationCheckboxOutlet->click();
    EXPECT_EQ(controller().activateApplicationLightOutlet->imageName(), YELLOW);
}

TEST_F(PopoverViewController, TheHeaderIsOfItsGrey)
{
    showContent(BOTH);
    const QImage picture = controller().tableHeaderViewOutlet->grab().toImage();
    EXPECT_EQ(picture.pixelColor(4, 4), QColor(150, 150, 150));
}

TEST_F(PopoverViewController, TheGatePagesAreMadeWhenTheyAreNeededAndKept)
{
    startWith(PASSWORD);
    EXPECT_EQ(controller().requestPasswordViewController, nullptr);
    open();
    auto* const before = controller().requestPasswordViewController.get();
    unlock();
    EXPECT_EQ(before->view().parentWidget(), nullptr);
    popup().hidePopover();
    open();
    EXPECT_EQ(controller().requestPasswordViewController.get(), before);
    EXPECT_EQ(controller().noPasswordViewController, nullptr);
}

TEST_F(PopoverViewController, HelpOnThePasswordPageLeadsToTheHelp)
{
    startWith(PASSWORD);
    open();
    button("helpButton").click();
    EXPECT_EQ(requests, Names{"help"});
}

TEST_F(PopoverViewController, AWrongPasswordShakesThePage)
{
    startWith(PASSWORD);
    open();
    enter("wrong");
    const auto* const shake = gate().centralViewOutlet->findChild<QAbstractAnimation*>("position");
    ASSERT_NE(shake, nullptr);
    EXPECT_EQ(shake->state(), QAbstractAnimation::Running);
    EXPECT_EQ(field().text(), "wrong");
}

TEST_F(PopoverViewController, AStateThatThereIsNotStopsTheProcess)
{
    startWith(PASSWORD);
    controller().state = static_cast<ui::PopoverViewController::State>(3);
    EXPECT_DEATH(controller().viewWillAppear(), "fatal: the popover has no such state");
}
