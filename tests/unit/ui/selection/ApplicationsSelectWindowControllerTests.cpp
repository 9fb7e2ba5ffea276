#include "SelectionWindowTest.h"
#include "qt/ThemedApplication.h"
#include "toolkit/QtIcon.h"
#include "ui/views/Images.h"

#include <QAccessible>
#include <QMessageBox>

namespace {

using SelectionWindow = SelectionWindowTest;

bool isInformational(const QMessageBox& alert)
{
    const QPixmap picture = alert.iconPixmap();
    const QPixmap wanted =
        ui::requiredImage("AlertInformational").pixmap(picture.deviceIndependentSize().toSize());
    return picture.toImage() == wanted.toImage();
}

const testing::Environment* const ENVIRONMENT =
    testing::AddGlobalTestEnvironment(new support::ThemedEnvironment);

} // namespace

TEST_F(SelectionWindow, IsLoadedOnFirstUse)
{
    EXPECT_FALSE(controller.isWindowLoaded());
    EXPECT_FALSE(controller.isWindowVisible());

    controller.showServiceWindow({}, true, false);

    EXPECT_TRUE(controller.isWindowVisible());
}

TEST_F(SelectionWindow, FloatsAboveOrdinaryWindows)
{
    show({});
    EXPECT_TRUE(controller.window().windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(SelectionWindow, ClosesAndOpensAgain)
{
    show({"Alpha"});

    controller.closeServiceWindow();
    EXPECT_FALSE(controller.isWindowVisible());
    controller.focus();
    EXPECT_TRUE(controller.isWindowVisible());
    EXPECT_EQ(shownRows(), Names{"Alpha"});
}

TEST_F(SelectionWindow, ClosingOneThatWasNeverOpenDoesNothing)
{
    controller.closeServiceWindow();
    EXPECT_FALSE(controller.isWindowLoaded());
}

TEST_F(SelectionWindow, ShowsIconNameAndButtonOfEachApplication)
{
    QPixmap picture(24, 24);
    picture.fill(Qt::red);
    const auto icon = std::make_shared<toolkit::QtIcon>([picture] { return QIcon(picture); });
    controller.showServiceWindow(
        {entity("Alpha", "a"),
         std::make_shared<applications::ApplicationEntity>("Beta", "b", icon)},
        true,
        false
    );
    settle();

    const ui::MyCell& row = cell(1);
    EXPECT_EQ(row.control<ui::ElidedLabel>(ui::MyCell::NAME_TAG).text(), "Beta");
    EXPECT_FALSE(row.control<ui::ImageView>(ui::MyCell::ICON_TAG).image().isNull());
    const auto& button = row.control<ui::ImageButtonView>(ui::MyCell::BUTTON_TAG);
    EXPECT_EQ(button.id, 1);
    EXPECT_TRUE(button.animated);
    EXPECT_EQ(button.accessibleName(), "Protect Beta");
}

TEST_F(SelectionWindow, AClickOnARowChoosesItsApplication)
{
    show({"Alpha", "Beta"});

    support::click(cell(1));

    EXPECT_EQ(selected, Names{"id Beta"});
    EXPECT_TRUE(controller.isWindowVisible());
}

TEST_F(SelectionWindow, TheButtonOfARowChoosesTheSame)
{
    show({"Alpha", "Beta"});

    support::click(cell(1).control<ui::ImageButtonView>(ui::MyCell::BUTTON_TAG));

    EXPECT_EQ(selected, Names{"id Beta"});
    EXPECT_EQ(table().currentRow(), 1);
}

TEST_F(SelectionWindow, AClickWithNobodyListeningIsDropped)
{
    show({"Alpha"});
    controller.onApplicationSelected = nullptr;
    controller.onLockAdministrativeApplicationsOptionChanged = nullptr;
    controller.onShowRunningApplicationsOptionChanged = nullptr;

    support::click(cell(0));
    controller.lockAdministrativeApplicationsButtonClick();
    controller.showRunningApplicationsButtonClick();

    EXPECT_EQ(selected, Names{});
}

TEST_F(SelectionWindow, TheRowChosenIsThatOfTheFilteredList)
{
    show({"Alpha", "Beta"});
    filter("bet");

    support::click(cell(0));

    EXPECT_EQ(selected, Names{"id Beta"});
}

TEST_F(SelectionWindow, ItsCheckBoxesShowTheOptions)
{
    controller.showServiceWindow({}, true, false);
    EXPECT_TRUE(controller.lockAdministrativeApplicationsCheckboxOutlet->isChecked());
    EXPECT_FALSE(controller.showRunningApplicationsOnlyCheckboxOutlet->isChecked());

    controller.showServiceWindow({}, false, true);
    EXPECT_FALSE(controller.lockAdministrativeApplicationsCheckboxOutlet->isChecked());
    EXPECT_TRUE(controller.showRunningApplicationsOnlyCheckboxOutlet->isChecked());
}

TEST_F(SelectionWindow, ItsCheckBoxesReportWhatTheyAreNow)
{
    std::vector<std::pair<std::string, bool>> changes;
    controller.onLockAdministrativeApplicationsOptionChanged = [&](bool isOn) {
        changes.emplace_back("administrative", isOn);
    };
    controller.onShowRunningApplicationsOptionChanged = [&](bool isOn) {
        changes.emplace_back("running", isOn);
    };
    show({});

    controller.lockAdministrativeApplicationsCheckboxOutlet->click();
    controller.showRunningApplicationsOnlyCheckboxOutlet->click();
    controller.lockAdministrativeApplicationsCheckboxOutlet->click();

    const std::vector<std::pair<std::string, bool>> wanted{
        {"administrative", false}, {"running", true}, {"administrative", true}};
    EXPECT_EQ(changes, wanted);
}

TEST_F(SelectionWindow, HelpOnAdministrativeApplicationsIsASheetOfTheWindow)
{
    show({});

    support::click(control<ui::ImageButtonView>("administrativeHelpButton"));
    fake.dispatchQueues.runMainTurn();

    const auto* const alert = controller.window().findChild<QMessageBox*>();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->windowModality(), Qt::WindowModal);
    EXPECT_TRUE(isInformational(*alert));
    EXPECT_EQ(alert->text(), "Lock administrative applications");
    EXPECT_EQ(
        alert->informativeText(),
        "With administrative applications users that are sharing your computer can (but it will "
        "be hard to) stop Tarvel from protecting your apps. \n\nThe administrative applications "
        "are: Terminal, Activity Monitor and Keychain Access."
    );
}

TEST_F(SelectionWindow, HelpOnRunningApplicationsIsASheetOfTheWindow)
{
    show({});

    support::click(control<ui::ImageButtonView>("showRunningApplicationsHelpButton"));
    fake.dispatchQueues.runMainTurn();

    const auto* const alert = controller.window().findChild<QMessageBox*>();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->windowModality(), Qt::WindowModal);
    EXPECT_TRUE(isInformational(*alert));
    EXPECT_EQ(alert->text(), "List Running Applications Only");
    EXPECT_EQ(
        alert->informativeText(),
        "By default, Tarvel will list the apps installed under your Applications folder. If you "
        "want to lock an app installed somewhere else, just check this option and start (run) the "
        "app."
    );
}

TEST_F(SelectionWindow, TheRowAfterTheChosenOneBecomesCurrent)
{
    show({"Alpha", "Beta", "Gamma", "Delta"});
    table().setCurrentRow(1);

    controller.displayApplicationsList(entities({"Alpha", "Gamma", "Delta"}));

    EXPECT_EQ(rows().at(static_cast<std::size_t>(table().currentRow())), "Gamma");
}

TEST_F(SelectionWindow, TheCurrentRowGoesWithItsApplication)
{
    show({"Beta", "Gamma"});
    table().setCurrentRow(1);

    controller.displayApplicationsList(entities({"Alpha", "Beta", "Gamma"}));
    EXPECT_EQ(table().currentRow(), 2);
    controller.displayApplicationsList(entities({"Gamma"}));
    EXPECT_EQ(table().currentRow(), 0);
}

TEST_F(SelectionWindow, OfTwoInstancesTheNearerOneStaysCurrent)
{
    const auto twin = [] { return entity("Twin", "twin"); };
    controller.showServiceWindow({entity("Alpha", "a"), twin(), twin()}, true, true);
    table().setCurrentRow(2);

    controller.displayApplicationsList({twin(), twin(), entity("Zeta", "z"), twin()});

    EXPECT_EQ(table().currentRow(), 1);
}

TEST_F(SelectionWindow, SaysNothingBeforeTheFirstList)
{
    controller.showServiceWindow({}, true, false);
    EXPECT_FALSE(control<QWidget>("emptyView").isVisible());
}

TEST_F(SelectionWindow, SaysWhyItsListIsEmptyAndWhatToDoNext)
{
    show({"Alpha"});
    EXPECT_FALSE(control<QWidget>("emptyView").isVisible());

    filter("xyz");
    EXPECT_TRUE(control<QWidget>("emptyView").isVisible());
    auto& heading = control<QLabel>("emptyHeadingLabel");
    EXPECT_EQ(heading.text(), "Nothing matches “xyz”");
    EXPECT_EQ(heading.accessibleName(), heading.text());
    EXPECT_FALSE(control<QLabel>("emptyHintLabel").text().isEmpty());

    controller.displayApplicationsList({}, true);
    EXPECT_EQ(heading.text(), "Everything here is protected");
    controller.displayApplicationsList({}, false);
    EXPECT_EQ(heading.text(), "No applications found");
}

TEST_F(SelectionWindow, IsAnAccessibleListOfNames)
{
    show({"Alpha", "Beta"});

    QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(&table());
    EXPECT_EQ(list->text(QAccessible::Name), "Applications");
    ASSERT_EQ(list->childCount(), 2);
    EXPECT_EQ(list->child(1)->text(QAccessible::Name), "Beta");
}

TEST_F(SelectionWindow, AnAssistiveToolChoosesARow)
{
    show({"Alpha", "Beta"});

    QAccessibleInterface* const row = QAccessible::queryAccessibleInterface(&table())->child(1);
    row->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());

    EXPECT_EQ(selected, Names{"id Beta"});
}
