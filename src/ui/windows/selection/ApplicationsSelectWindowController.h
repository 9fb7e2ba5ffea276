// The window in which the user picks the applications to protect: a list with a filter, and two
// options. It reports what the user does; its owner decides. Main thread only. A list entry that is
// gone when it is clicked, and a callback that is not set, drop the click.
#pragma once

#include "applications/ApplicationEntity.h"
#include "ui/views/ImageButtonView.h"
#include "ui/views/Outlet.h"
#include "ui/views/TableView.h"
#include "ui/views/TextField.h"
#include "ui/views/WindowController.h"
#include "ui/windows/selection/SelectionKeys.h"

#include <QCheckBox>
#include <QLabel>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace ui {

class ApplicationsSelectWindowController final : public WindowController
{
public:
    using Applications = std::vector<applications::ApplicationEntityPtr>;

    /// Shows the window with that list and those options, the keys in the filter field.
    void showServiceWindow(Applications applications, bool administrative, bool runningOnly);

    /// Puts another list in place of the present one. The filter stays, and the current row as far
    /// as it can. `someMore`: there are more, which are protected already.
    void displayApplicationsList(Applications applications, bool someMore = false);

    void closeServiceWindow();

    /// Brings the window to the front.
    void focus();

    bool isWindowVisible();

    void windowDidLoad() override;

    int numberOfRows() const;

    /// The text of the filter was edited.
    void controlTextDidChange();

    void lockAdministrativeApplicationsButtonClick();
    void showRunningApplicationsButtonClick();
    void administrativeHelpButtonClick();
    void showRunningApplicationsHelpButtonClick();

    std::function<void(bool)> onLockAdministrativeApplicationsOptionChanged;
    std::function<void(bool)> onShowRunningApplicationsOptionChanged;
    std::function<void(const applications::ApplicationEntityPtr&)> onApplicationSelected;

    Outlet<TableView> applicationsTableViewOutlet;
    Outlet<QWidget> tableFooterViewOutlet;
    Outlet<QCheckBox> lockAdministrativeApplicationsCheckboxOutlet;
    Outlet<QCheckBox> showRunningApplicationsOnlyCheckboxOutlet;
    Outlet<TextField> filterTextfieldOutlet;
    Outlet<ImageButtonView> blurSearchTextfieldButtonOutlet;
    Outlet<QWidget> filterFieldBackgroundViewOutlet;

    Applications originalApplicationEntities;
    Applications filteredApplicationEntities; // the rows
    bool lockAdministrativeApplications = false;
    bool showRunningApplicationsOnly = false;

protected:
    std::unique_ptr<PanelWindow> loadWindow() override;

private:
    void setUpTable();
    void setUpFilter();
    void setUpCheckBoxes();
    void fillCell(int row, MyCell& cell);

    /// Empty where there is no such row.
    applications::ApplicationEntityPtr applicationAt(int row) const;
    void selectRow(int row);
    void clearFilter();
    void recomputeFilter();
    void reloadRows(std::optional<int> currentRow = std::nullopt);
    void showEmptyMessage();

    std::optional<SelectionKeys> keys; // once the window is loaded
    Outlet<QWidget> emptyView;
    Outlet<QLabel> emptyHeadingLabel;
    Outlet<QLabel> emptyHintLabel;
    Outlet<ImageButtonView> administrativeHelpButton;
    Outlet<ImageButtonView> showRunningApplicationsHelpButton;
    bool isListKnown = false; // an empty list means something
    bool someAreProtected = false;
};

} // namespace ui
