// The popover's view: one of two gate pages, or the list of protected applications with its
// switches. Which of them is shown is the state's business, and the state is its owner's. Main
// thread only.
#pragma once

#include "applications/ApplicationEntity.h"
#include "ui/popover/NoPasswordViewController.h"
#include "ui/popover/OptionsMenu.h"
#include "ui/popover/PopoverPages.h"
#include "ui/popover/RequestPasswordViewController.h"
#include "ui/views/ImageButtonView.h"
#include "ui/views/ImageView.h"
#include "ui/views/Outlet.h"
#include "ui/views/SwitchView.h"
#include "ui/views/TableView.h"
#include "ui/views/ViewController.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ui {

class PopoverViewController : public ViewController
{
public:
    enum class State
    {
        NoPassword = 0,
        PasswordRequired = 1,
        Unlocked = 2,
    };

    using Entities = std::vector<applications::ApplicationEntityPtr>;

    PopoverViewController() = default;

    /// What the view shows once it is loaded.
    void initiateData(bool isActive, bool startsAtLogin, Entities applications);

    void refreshLockedApplicationsAndInterface(Entities applications);

    /// Shows the list and the switches, whatever the state.
    void showContent();

    void wrongPassword();

    /// The page that says that there is no password is on the screen.
    bool showsNoPasswordPage() const;

    void viewDidLoad() override;
    void viewWillAppear() override;
    void viewDidDisappear() override;

    void activateApplicationCheckboxClick();
    void startApplicationAtLoginCheckboxClick();
    void menuButtonClick();
    void changePreferencesMenuButtonClick();
    void lockAnotherAppMenuButtonClick();
    void helpMenuButtonClick();
    void quitApplicationMenuButtonClick();

    Outlet<QWidget> noItemViewOutlet;
    Outlet<TableView> applicationsTableViewOutlet;
    Outlet<QWidget> tableViewScrollViewOutlet;
    Outlet<QWidget> tableHeaderViewOutlet;
    Outlet<ImageButtonView> addApplicationButtonOutlet;
    Outlet<ImageButtonView> menuButtonOutlet;
    Outlet<SwitchView> activateApplicationCheckboxOutlet;
    Outlet<SwitchView> startAtLoginCheckboxOutlet;
    Outlet<ImageView> activateApplicationLightOutlet;
    Outlet<ImageView> startAtLoginLightOutlet;

    std::unique_ptr<OptionsMenu> optionsMenu;
    Entities lockedApplications;
    bool applicationIsActive = false;
    bool startAtLogin = false;
    State state = State::NoPassword;
    std::unique_ptr<NoPasswordViewController> noPasswordViewController;
    std::unique_ptr<RequestPasswordViewController> requestPasswordViewController;

    std::function<void()> onAddApplicationsRequest;
    std::function<void(bool)> onStartAtLoginConfigurationChanged;
    std::function<void(bool)> onIsActiveConfigurationChanged;
    std::function<void()> onChangePreferencesRequest;
    std::function<void()> onHelpRequest;
    std::function<void()> onQuitRequest;
    std::function<void(const applications::ApplicationEntityPtr&)> onRemoveApplicationRequest;
    std::function<void(const std::string&)> onPasswordEntered;

protected:
    std::unique_ptr<QWidget> loadView() override;

private:
    void setUpTable();
    void setUpButtons();
    void setUpSwitches();
    void fillRow(int row, MyCell& cell);
    void removeRow(int row) const;
    void showPage();
    void showNoPasswordPage();
    void showPasswordPage();
    void showInPlaceOfContent(ViewController& page);
    void showEmptyView();

    /// Of the view, which it loads on first use.
    PopoverPages& pages();

    std::optional<PopoverPages> loadedPages;
};

} // namespace ui
