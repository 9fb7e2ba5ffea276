#include "ui/windows/selection/ApplicationsSelectWindowController.h"

#include "platform/Call.h"
#include "toolkit/QtIcon.h"
#include "ui/alerts/AlertMessagesService.h"
#include "ui/views/ElidedLabel.h"
#include "ui/views/ImageView.h"
#include "ui/views/Theme.h"
#include "ui/windows/selection/EmptyListMessage.h"
#include "ui/windows/selection/FilterFieldBackgroundView.h"
#include "ui/windows/selection/FilteredApplications.h"
#include "ui_ApplicationsSelectWindow.h"

#include <QSignalBlocker>

#include <utility>

namespace ui {

using applications::ApplicationEntityPtr;

std::unique_ptr<PanelWindow> ApplicationsSelectWindowController::loadWindow()
{
    auto panel = std::make_unique<PanelWindow>();
    Ui::ApplicationsSelectWindow ui;
    ui.setupUi(panel.get());
    applicationsTableViewOutlet = ui.applicationsTableViewOutlet;
    tableFooterViewOutlet = ui.tableFooterViewOutlet;
    lockAdministrativeApplicationsCheckboxOutlet = ui.lockAdministrativeApplicationsCheckboxOutlet;
    showRunningApplicationsOnlyCheckboxOutlet = ui.showRunningApplicationsOnlyCheckboxOutlet;
    filterTextfieldOutlet = ui.filterTextfieldOutlet;
    blurSearchTextfieldButtonOutlet = ui.blurSearchTextfieldButtonOutlet;
    filterFieldBackgroundViewOutlet = ui.filterFieldBackgroundViewOutlet;
    emptyView = ui.emptyView;
    emptyHeadingLabel = ui.emptyHeadingLabel;
    emptyHintLabel = ui.emptyHintLabel;
    administrativeHelpButton = ui.administrativeHelpButton;
    showRunningApplicationsHelpButton = ui.showRunningApplicationsHelpButton;
    return panel;
}

void ApplicationsSelectWindowController::windowDidLoad()
{
    QPalette strip = tableFooterViewOutlet->palette();
    strip.setColor(QPalette::Window, Theme::LINE);
    tableFooterViewOutlet->setPalette(strip);
    tableFooterViewOutlet->setAutoFillBackground(true);
    setUpTable();
    setUpFilter();
    keys.emplace(*filterTextfieldOutlet, *applicationsTableViewOutlet);
    setUpCheckBoxes();
    reloadRows();
}

void ApplicationsSelectWindowController::setUpTable()
{
    TableView& table = *applicationsTableViewOutlet;
    table.numberOfRows = [this] { return numberOfRows(); };
    table.titleOfRow = [this](int row) { return QString::fromStdString(applicationAt(row)->name); };
    table.fillCell = [this](int row, MyCell& cell) { fillCell(row, cell); };
    table.onSelect = [this](int row) { selectRow(row); };
}

void ApplicationsSelectWindowController::setUpFilter()
{
    filterTextfieldOutlet->onChange = [this] { controlTextDidChange(); };
    blurSearchTextfieldButtonOutlet->initiate(0, true);
    blurSearchTextfieldButtonOutlet->onClick = [this](int) { clearFilter(); };
}

void ApplicationsSelectWindowController::setUpCheckBoxes()
{
    QCheckBox& administrative = *lockAdministrativeApplicationsCheckboxOutlet;
    administrative.setChecked(lockAdministrativeApplications);
    QObject::connect(&administrative, &QCheckBox::toggled, &administrative, [this] {
        lockAdministrativeApplicationsButtonClick();
    });
    QCheckBox& running = *showRunningApplicationsOnlyCheckboxOutlet;
    running.setChecked(showRunningApplicationsOnly);
    QObject::connect(&running, &QCheckBox::toggled, &running, [this] {
        showRunningApplicationsButtonClick();
    });
    administrativeHelpButton->initiate(0, true);
    administrativeHelpButton->onClick = [this](int) { administrativeHelpButtonClick(); };
    showRunningApplicationsHelpButton->initiate(1, true);
    showRunningApplicationsHelpButton->onClick = [this](int) {
        showRunningApplicationsHelpButtonClick();
    };
}

void ApplicationsSelectWindowController::showServiceWindow(
    Applications applications, bool administrative, bool runningOnly
)
{
    originalApplicationEntities = std::move(applications);
    isListKnown = !originalApplicationEntities.empty();
    someAreProtected = false;
    lockAdministrativeApplications = administrative;
    showRunningApplicationsOnly = runningOnly;
    recomputeFilter();
    if (isWindowLoaded()) {
        const QSignalBlocker first(lockAdministrativeApplicationsCheckboxOutlet.get());
        const QSignalBlocker second(showRunningApplicationsOnlyCheckboxOutlet.get());
        lockAdministrativeApplicationsCheckboxOutlet->setChecked(administrative);
        showRunningApplicationsOnlyCheckboxOutlet->setChecked(runningOnly);
        reloadRows();
    }
    focus();
}

void ApplicationsSelectWindowController::displayApplicationsList(
    Applications applications, bool someMore
)
{
    const int row = isWindowLoaded() ? applicationsTableViewOutlet->currentRow() : -1;
    const ApplicationEntityPtr current = applicationAt(row);
    originalApplicationEntities = std::move(applications);
    someAreProtected = someMore;
    isListKnown = true;
    recomputeFilter();
    reloadRows(
        current != nullptr ? rowOf(filteredApplicationEntities, current->bundleIdentifier, row)
                           : std::nullopt
    );
}

void ApplicationsSelectWindowController::closeServiceWindow()
{
    close();
}

void ApplicationsSelectWindowController::focus()
{
    PanelWindow& panel = window();
    if (!panel.isVisible()) {
        filterTextfieldOutlet->setFocus();
        filterTextfieldOutlet->selectAll(); // what is typed next replaces what was looked for
    }
    panel.makeKeyAndOrderFront(); // the popover has just closed; nothing else would have the keys
}

bool ApplicationsSelectWindowController::isWindowVisible()
{
    return isWindowLoaded() && window().isVisible();
}

int ApplicationsSelectWindowController::numberOfRows() const
{
    return static_cast<int>(filteredApplicationEntities.size());
}

void ApplicationsSelectWindowController::controlTextDidChange()
{
    recomputeFilter();
    reloadRows(0);
}

void ApplicationsSelectWindowController::clearFilter()
{
    filterTextfieldOutlet->setStringValue("");
    applicationsTableViewOutlet->setFocus();
    recomputeFilter();
    reloadRows(0);
}

void ApplicationsSelectWindowController::recomputeFilter()
{
    filteredApplicationEntities = filteredApplications(
        originalApplicationEntities,
        isWindowLoaded() ? filterTextfieldOutlet->stringValue() : std::string()
    );
}

void ApplicationsSelectWindowController::reloadRows(std::optional<int> currentRow)
{
    if (!isWindowLoaded()) {
        return;
    }
    applicationsTableViewOutlet->reloadData(currentRow);
    blurSearchTextfieldButtonOutlet->setVisible(!filterTextfieldOutlet->text().isEmpty());
    showEmptyMessage();
}

void ApplicationsSelectWindowController::showEmptyMessage()
{
    const EmptyListMessage message = emptyListMessage(
        {.filter = filterTextfieldOutlet->text(),
         .listIsEmpty = originalApplicationEntities.empty(),
         .runningApplicationsOnly = showRunningApplicationsOnly,
         .someAreProtected = someAreProtected}
    );
    const bool isEmpty = isListKnown && filteredApplicationEntities.empty();
    emptyHeadingLabel->setText(message.heading);
    emptyHeadingLabel->setAccessibleName(message.heading);
    emptyHintLabel->setText(message.hint);
    emptyHintLabel->setAccessibleName(message.hint);
    emptyView->setVisible(isEmpty);
}

ApplicationEntityPtr ApplicationsSelectWindowController::applicationAt(int row) const
{
    return row >= 0 && row < numberOfRows()
               ? filteredApplicationEntities[static_cast<std::size_t>(row)]
               : nullptr;
}

void ApplicationsSelectWindowController::fillCell(int row, MyCell& cell)
{
    const ApplicationEntityPtr application = applicationAt(row);
    const QString name = QString::fromStdString(application->name);
    cell.control<ImageView>(MyCell::ICON_TAG).setImage(toolkit::QtIcon::of(application->icon));
    cell.control<ElidedLabel>(MyCell::NAME_TAG).setText(name);
    auto& button = cell.control<ImageButtonView>(MyCell::BUTTON_TAG);
    if (button.imageName().isEmpty()) {
        button.setImageName(QStringLiteral("ChooseApplication"));
        button.setFocusPolicy(Qt::NoFocus); // Return on the row does the same
    }
    button.setAccessibleName(QStringLiteral("Protect %1").arg(name));
    button.initiate(row, true);
    button.onClick = [this](int id) {
        applicationsTableViewOutlet->setCurrentRow(id);
        selectRow(id);
    };
}

void ApplicationsSelectWindowController::selectRow(int row)
{
    const ApplicationEntityPtr application = applicationAt(row);
    if (application != nullptr) {
        platform::call(onApplicationSelected, application);
    }
}

void ApplicationsSelectWindowController::lockAdministrativeApplicationsButtonClick()
{
    lockAdministrativeApplications = lockAdministrativeApplicationsCheckboxOutlet->isChecked();
    platform::call(onLockAdministrativeApplicationsOptionChanged, lockAdministrativeApplications);
}

void ApplicationsSelectWindowController::showRunningApplicationsButtonClick()
{
    showRunningApplicationsOnly = showRunningApplicationsOnlyCheckboxOutlet->isChecked();
    platform::call(onShowRunningApplicationsOptionChanged, showRunningApplicationsOnly);
}

void ApplicationsSelectWindowController::administrativeHelpButtonClick()
{
    AlertMessagesService().showAlert(
        "Lock administrative applications",
        "With administrative applications users that are sharing your computer can (but it will "
        "be hard to) stop Tarvel from protecting your apps. \n\nThe administrative applications "
        "are: Terminal, Activity Monitor and Keychain Access.",
        AlertMessagesService::INFORMATIONAL,
        &window()
    );
}

void ApplicationsSelectWindowController::showRunningApplicationsHelpButtonClick()
{
    AlertMessagesService().showAlert(
        "List Running Applications Only",
        "By default, Tarvel will list the apps installed under your Applications folder. If you "
        "want to lock an app installed somewhere else, just check this option and start (run) "
        "the app.",
        AlertMessagesService::INFORMATIONAL,
        &window()
    );
}

} // namespace ui
