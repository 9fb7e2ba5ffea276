// The catalogue of installed applications, kept up to date: a thread of its own reads everything
// again, a little after something changed in a folder that it came from. Reading never waits for
// that. Any thread may call.
#pragma once

#include "linux/proc/PollThread.h"
#include "linux/proc/Report.h"
#include "linux/xdg/CatalogueBuilder.h"
#include "linux/xdg/FolderWatch.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

namespace xdg {

class ApplicationCatalogue
{
public:
    /// Reads at once. `report` is told when changes cannot be watched.
    ApplicationCatalogue(XdgEnvironment environment, const Roles& roles, proc::Report report);
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

private:
    void reload();
    void planReload();

    XdgEnvironment environment;
    const Roles& roles;
    proc::Report report;
    mutable std::mutex mutex;
    std::shared_ptr<const Catalogue> catalogue; // guarded by the mutex
    proc::PollThread thread;
    FolderWatch folders; // this and the rest belong to the thread
    bool planned = false;
    bool complained = false;
    std::chrono::milliseconds pause{0};
};

} // namespace xdg
