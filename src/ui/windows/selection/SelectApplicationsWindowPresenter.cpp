#include "ui/windows/selection/SelectApplicationsWindowPresenter.h"

#include "app/BackgroundRunner.h"
#include "storage/ConfigurationAndPreferencesService.h"
#include "ui/windows/selection/SelectableApplications.h"

#include <QScopedValueRollback>

#include <utility>

namespace ui {

using applications::ApplicationEntityPtr;

SelectApplicationsWindowPresenter::SelectApplicationsWindowPresenter()
    : applicationsSelectWindowController(std::make_unique<ApplicationsSelectWindowController>()),
      configurationAndPreferencesService(
          storage::ConfigurationAndPreferencesService::sharedInstance()
      )
{
    configurationAndPreferencesService.addOnConfigurationChangeEvent(lifetime.guard([this] {
        settingsChanged();
    }));
}

SelectApplicationsWindowPresenter::~SelectApplicationsWindowPresenter()
{
    stopMonitoring();
}

void SelectApplicationsWindowPresenter::startService()
{
    wire();
    applicationsSelectWindowController->showServiceWindow(
        {},
        configurationAndPreferencesService.getLockAdministrativeApplications(),
        showRunningApplications
    );
    reload();
}

void SelectApplicationsWindowPresenter::stopService()
{
    stopMonitoring();
    applicationsSelectWindowController->closeServiceWindow();
}

void SelectApplicationsWindowPresenter::focus()
{
    const bool opens = !applicationsSelectWindowController->isWindowVisible();
    applicationsSelectWindowController->focus();
    if (opens) {
        reload();
    }
}

void SelectApplicationsWindowPresenter::wire()
{
    if (!std::exchange(monitoring, true)) {
        applicationsMonitorService.startService();
    }
    const auto changed = [this](const ApplicationEntityPtr&) { runningApplicationsChanged(); };
    applicationsMonitorService.onApplicationDidStart = changed;
    applicationsMonitorService.onApplicationTerminated = changed;

    ApplicationsSelectWindowController& controller = *applicationsSelectWindowController;
    controller.onLockAdministrativeApplicationsOptionChanged = [this](bool isOn) {
        changeSettings([this, isOn] {
            configurationAndPreferencesService.setLockAdministrativeApplications(isOn);
        });
    };
    controller.onShowRunningApplicationsOptionChanged = [this](bool isOn) {
        showRunningApplications = isOn;
        reload();
    };
    controller.onApplicationSelected = [this](const ApplicationEntityPtr& application) {
        applicationSelected(*application);
    };
}

void SelectApplicationsWindowPresenter::stopMonitoring()
{
    if (std::exchange(monitoring, false)) {
        applicationsMonitorService.stopService();
    }
}

void SelectApplicationsWindowPresenter::reload()
{
    const auto deliverHere =
        lifetime.guard([this, number = ++lastReload](const ApplicationsList& list) {
            deliver(number, list);
        });
    SelectableApplications selectable(
        systemApplicationsService, configurationAndPreferencesService, showRunningApplications
    );
    app::BackgroundRunner::run([deliverHere, selectable = std::move(selectable)]() mutable {
        app::BackgroundRunner::runOnMainThread([deliverHere, list = selectable.compute()] {
            deliverHere(list);
        });
    });
}

void SelectApplicationsWindowPresenter::deliver(std::uint64_t number, const ApplicationsList& list)
{
    applicationsSelectWindowController->displayApplicationsList(
        list.applications, list.someAreProtected
    );
    if (number < newestDelivered) {
        reload(); // overtaken on its way, so that it shows what was true before
    } else {
        newestDelivered = number;
    }
}

void SelectApplicationsWindowPresenter::runningApplicationsChanged()
{
    if (showRunningApplications && applicationsSelectWindowController->isWindowVisible()) {
        reload(); // one that is closed opens with a new list
    }
}

void SelectApplicationsWindowPresenter::settingsChanged()
{
    if (!changing && applicationsSelectWindowController->isWindowVisible()) {
        reload(); // what was protected may have been taken from the list elsewhere
    }
}

void SelectApplicationsWindowPresenter::applicationSelected(
    const applications::ApplicationEntity& application
)
{
    changeSettings([this, bundleIdentifier = application.bundleIdentifier] {
        configurationAndPreferencesService.addLockedApplicationBundleId(bundleIdentifier);
    });
}

void SelectApplicationsWindowPresenter::changeSettings(const std::function<void()>& change)
{
    {
        const QScopedValueRollback own(changing, true);
        change();
    }
    reload();
}

} // namespace ui
