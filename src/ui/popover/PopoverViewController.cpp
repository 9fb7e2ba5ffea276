#include "ui/popover/PopoverViewController.h"

#include "platform/Call.h"
#include "platform/Fatal.h"
#include "toolkit/QtIcon.h"
#include "toolkit/ToolTip.h"
#include "ui/views/ElidedLabel.h"
#include "ui_PopoverView.h"

#include <utility>

namespace ui {

namespace {

void setLight(ImageView& light, bool available)
{
    light.setImageName(
        available ? QStringLiteral("NSStatusAvailable")
                  : QStringLiteral("NSStatusPartiallyAvailable")
    );
}

} // namespace

std::unique_ptr<QWidget> PopoverViewController::loadView()
{
    auto content = std::make_unique<QWidget>();
    Ui::PopoverView form;
    form.setupUi(content.get());
    noItemViewOutlet = form.noItemViewOutlet;
    applicationsTableViewOutlet = form.applicationsTableViewOutlet;
    tableViewScrollViewOutlet = form.tableViewScrollViewOutlet;
    tableHeaderViewOutlet = form.tableHeaderViewOutlet;
    addApplicationButtonOutlet = form.addApplicationButtonOutlet;
    menuButtonOutlet = form.menuButtonOutlet;
    activateApplicationCheckboxOutlet = form.activateApplicationCheckboxOutlet;
    startAtLoginCheckboxOutlet = form.startAtLoginCheckboxOutlet;
    activateApplicationLightOutlet = form.activateApplicationLightOutlet;
    startAtLoginLightOutlet = form.startAtLoginLightOutlet;
    return content;
}

void PopoverViewController::initiateData(bool isActive, bool startsAtLogin, Entities applications)
{
    applicationIsActive = isActive;
    startAtLogin = startsAtLogin;
    lockedApplications = std::move(applications);
}

void PopoverViewController::refreshLockedApplicationsAndInterface(Entities applications)
{
    lockedApplications = std::move(applications);
    if (noItemViewOutlet) {
        showEmptyView();
    }
    if (applicationsTableViewOutlet) {
        applicationsTableViewOutlet->reloadData();
    }
}

void PopoverViewController::wrongPassword()
{
    if (requestPasswordViewController != nullptr) {
        requestPasswordViewController->wrongPassword();
    }
}

bool PopoverViewController::showsNoPasswordPage() const
{
    return loadedPages && loadedPages->shows(noPasswordViewController.get());
}

void PopoverViewController::viewDidLoad()
{
    loadedPages.emplace(view());
    setUpTable();
    setUpButtons();
    setUpSwitches();
}

void PopoverViewController::viewWillAppear()
{
    showPage();
}

void PopoverViewController::viewDidDisappear()
{
    state = State::PasswordRequired;
    if (optionsMenu != nullptr) {
        optionsMenu->close();
    }
    if (isViewLoaded()) {
        applicationsTableViewOutlet->setConcealed(true);
        pages().hideAll(); // nothing of the content stays behind, and nothing of what was typed
    }
}

PopoverPages& PopoverViewController::pages()
{
    view();
    return *loadedPages;
}

void PopoverViewController::showPage()
{
    switch (state) {
    case State::NoPassword:
        showNoPasswordPage();
        return;
    case State::PasswordRequired:
        showPasswordPage();
        return;
    case State::Unlocked:
        showContent();
        return;
    }
    platform::fatal("the popover has no such state");
}

void PopoverViewController::showNoPasswordPage()
{
    if (noPasswordViewController == nullptr) {
        noPasswordViewController = std::make_unique<NoPasswordViewController>();
        noPasswordViewController->onHelpRequest = onHelpRequest;
        noPasswordViewController->onPasswordSetupRequest = onChangePreferencesRequest;
    }
    showInPlaceOfContent(*noPasswordViewController);
}

void PopoverViewController::showPasswordPage()
{
    if (requestPasswordViewController == nullptr) {
        requestPasswordViewController = std::make_unique<RequestPasswordViewController>();
        requestPasswordViewController->onHelpRequest = onHelpRequest;
        requestPasswordViewController->onPasswordEntered = onPasswordEntered;
    }
    showInPlaceOfContent(*requestPasswordViewController);
}

void PopoverViewController::showInPlaceOfContent(ViewController& page)
{
    pages().show(page);
    applicationsTableViewOutlet->setConcealed(true);
}

void PopoverViewController::showContent()
{
    pages().showContent();
    applicationsTableViewOutlet->setConcealed(false);
    showEmptyView();
    if (lockedApplications.empty()) {
        addApplicationButtonOutlet->setFocus();
    } else {
        applicationsTableViewOutlet->setFocus();
    }
}

void PopoverViewController::showEmptyView()
{
    noItemViewOutlet->setVisible(lockedApplications.empty());
}

void PopoverViewController::setUpTable()
{
    applicationsTableViewOutlet->numberOfRows = [this] {
        return static_cast<int>(lockedApplications.size());
    };
    applicationsTableViewOutlet->titleOfRow = [this](int row) {
        return QString::fromStdString(lockedApplications.at(static_cast<std::size_t>(row))->name);
    };
    applicationsTableViewOutlet->fillCell = [this](int row, MyCell& cell) { fillRow(row, cell); };
    applicationsTableViewOutlet->onDelete = [this](int row) { removeRow(row); };
    applicationsTableViewOutlet->reloadData();
}

void PopoverViewController::setUpButtons()
{
    addApplicationButtonOutlet->initiate(0, true);
    addApplicationButtonOutlet->onClick = [this](int /*id*/) {
        platform::call(onAddApplicationsRequest);
    };
    menuButtonOutlet->initiate(0, true);
    menuButtonOutlet->onClick = [this](int /*id*/) { menuButtonClick(); };
}

void PopoverViewController::setUpSwitches()
{
    activateApplicationCheckboxOutlet->setChecked(applicationIsActive);
    startAtLoginCheckboxOutlet->setChecked(startAtLogin);
    setLight(*activateApplicationLightOutlet, applicationIsActive);
    setLight(*startAtLoginLightOutlet, startAtLogin);
    QObject::connect(activateApplicationCheckboxOutlet.get(), &QCheckBox::toggled, &view(), [this] {
        activateApplicationCheckboxClick();
    });
    QObject::connect(startAtLoginCheckboxOutlet.get(), &QCheckBox::toggled, &view(), [this] {
        startApplicationAtLoginCheckboxClick();
    });
}

void PopoverViewController::fillRow(int row, MyCell& cell)
{
    const applications::ApplicationEntity& entity =
        *lockedApplications.at(static_cast<std::size_t>(row));
    const QString name = QString::fromStdString(entity.name);
    cell.control<ImageView>(MyCell::ICON_TAG).setImage(toolkit::QtIcon::of(entity.icon));
    cell.control<ElidedLabel>(MyCell::NAME_TAG).setText(name);
    auto& button = cell.control<ImageButtonView>(MyCell::BUTTON_TAG);
    button.setImageName(QStringLiteral("RemoveApplication"));
    button.setAccessibleName(QStringLiteral("Stop protecting %1").arg(name));
    button.setToolTip(toolkit::toolTipOf(button.accessibleName()));
    button.initiate(row, true);
    button.onClick = [this](int id) { removeRow(id); };
}

void PopoverViewController::removeRow(int row) const
{
    const auto index = static_cast<std::size_t>(row);
    if (index < lockedApplications.size()) {
        platform::call(
            onRemoveApplicationRequest,
            applications::ApplicationEntityPtr(lockedApplications[index])
        );
    }
}

void PopoverViewController::activateApplicationCheckboxClick()
{
    const bool on = activateApplicationCheckboxOutlet->isChecked();
    setLight(*activateApplicationLightOutlet, on);
    platform::call(onIsActiveConfigurationChanged, on);
}

void PopoverViewController::startApplicationAtLoginCheckboxClick()
{
    const bool on = startAtLoginCheckboxOutlet->isChecked();
    setLight(*startAtLoginLightOutlet, on);
    platform::call(onStartAtLoginConfigurationChanged, on);
}

void PopoverViewController::menuButtonClick()
{
    optionsMenu = std::make_unique<OptionsMenu>(
        OptionsMenu::Actions{
            .changePreferences = [this] { changePreferencesMenuButtonClick(); },
            .lockAnotherApp = [this] { lockAnotherAppMenuButtonClick(); },
            .help = [this] { helpMenuButtonClick(); },
            .quitApplication = [this] { quitApplicationMenuButtonClick(); },
        },
        menuButtonOutlet.get()
    );
    const QWidget& button = *menuButtonOutlet;
    optionsMenu->popup(button.mapToGlobal(QPoint(button.width() / 2, button.height() * 5 / 4)));
}

void PopoverViewController::changePreferencesMenuButtonClick()
{
    platform::call(onChangePreferencesRequest);
}

void PopoverViewController::lockAnotherAppMenuButtonClick()
{
    platform::call(onAddApplicationsRequest);
}

void PopoverViewController::helpMenuButtonClick()
{
    platform::call(onHelpRequest);
}

void PopoverViewController::quitApplicationMenuButtonClick()
{
    platform::call(onQuitRequest);
}

} // namespace ui
