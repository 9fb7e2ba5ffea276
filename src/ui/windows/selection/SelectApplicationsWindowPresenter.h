// Owns the window in which the user picks the applications to protect: computes its list on the
// global queue, writes each choice into the settings at once. Main thread only. What the queues
// still bring after its end is dropped.
#pragma once

#include "applications/ApplicationEntity.h"
#include "applications/ApplicationsMonitorService.h"
#include "applications/SystemApplicationsService.h"
#include "platform/Lifetime.h"
#include "ui/windows/selection/ApplicationsSelectWindowController.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace storage {
class ConfigurationAndPreferencesService;
} // namespace storage

namespace ui {

struct ApplicationsList;

class SelectApplicationsWindowPresenter
{
public:
    SelectApplicationsWindowPresenter();
    Q_DISABLE_COPY_MOVE(SelectApplicationsWindowPresenter)
    ~SelectApplicationsWindowPresenter();

    /// Opens the window and follows what starts and ends.
    void startService();

    /// Closes the window.
    void stopService();

    /// Brings the window to the front. One that was closed opens with a new list; one that is open
    /// does not follow what is installed meanwhile.
    void focus();

    const std::unique_ptr<ApplicationsSelectWindowController> applicationsSelectWindowController;
    storage::ConfigurationAndPreferencesService& configurationAndPreferencesService;
    applications::ApplicationsMonitorService applicationsMonitorService;
    applications::SystemApplicationsService systemApplicationsService;

    /// Kept as long as the presenter, not in the settings.
    bool showRunningApplications = false;

private:
    void wire();
    void stopMonitoring();
    void reload();
    void deliver(std::uint64_t number, const ApplicationsList& list);
    void runningApplicationsChanged();
    void settingsChanged();
    void applicationSelected(const applications::ApplicationEntity& application);

    /// Changes a setting without hearing of it, and reloads the list then.
    void changeSettings(const std::function<void()>& change);

    bool monitoring = false;
    bool changing = false;
    std::uint64_t lastReload = 0;
    std::uint64_t newestDelivered = 0;
    platform::Lifetime lifetime;
};

} // namespace ui
