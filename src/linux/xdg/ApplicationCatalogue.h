// The catalogue of installed applications, kept up to date: a thread of its own reads what changed,
// a little after it did, and keeps what the chosen applications are known by. Reading never waits
// for that. Any thread may call.
#pragma once

#include "linux/proc/PollThread.h"
#include "linux/xdg/CatalogueBuilder.h"
#include "linux/xdg/ChosenFile.h"
#include "linux/xdg/FolderWatch.h"
#include "platform/Report.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>

namespace xdg {

class ApplicationCatalogue
{
public:
    /// Reads at once. `report` is told when changes cannot be watched. `chosenFile` is where it is
    /// kept what the chosen applications are known by; empty: nowhere.
    ApplicationCatalogue(
        XdgEnvironment environment,
        const Roles& roles,
        platform::Report report,
        const std::string& chosenFile = {}
    );
    ApplicationCatalogue(const ApplicationCatalogue&) = delete;
    ApplicationCatalogue& operator=(const ApplicationCatalogue&) = delete;
    ApplicationCatalogue(ApplicationCatalogue&&) = delete;
    ApplicationCatalogue& operator=(ApplicationCatalogue&&) = delete;
    ~ApplicationCatalogue();

    /// Called on the catalogue's thread whenever `current` gives another one. Set before `start`.
    std::function<void()> onChanged;

    /// Follows changes from now on; what changed since the construction counts, too.
    void start();

    /// As it is now; it stays as it is while it is held. Never empty.
    [[nodiscard]] std::shared_ptr<const Catalogue> current() const;

    /// These applications, and those that play these roles, stay recognisable from now on, whatever
    /// becomes of their entries; all others no longer do.
    void choose(std::set<std::string> identifiers);

    /// The application is also executed so. Forgotten with this program unless it is chosen, be it
    /// later.
    void learn(const std::string& id, const ExecutionKey& key);

private:
    void follow();
    void reload();
    void rebuild();
    bool keepLearned();
    void planReload(const FolderChanges& changes);
    void watch(const std::string& folder);

    XdgEnvironment environment;
    platform::Report report;
    mutable std::mutex mutex;
    std::shared_ptr<const Catalogue> catalogue; // guarded by the mutex
    proc::PollThread thread;
    CatalogueBuilder builder; // this and the rest belong to the thread
    ChosenFile file;
    Choice choice;
    ChosenApplications learned; // their keys only, of all applications
    FolderWatch folders;
    FolderChanges changed; // since the last reading
    bool keeping = false;
    bool planned = false;
    bool complained = false;
    std::chrono::milliseconds pause{0};
};

} // namespace xdg
