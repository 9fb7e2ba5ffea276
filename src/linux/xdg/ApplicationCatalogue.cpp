#include "linux/xdg/ApplicationCatalogue.h"

#include <algorithm>
#include <utility>

namespace xdg {

namespace {

// An installation changes many files one after the other.
constexpr std::chrono::milliseconds SHORTEST_PAUSE{200};
// However large the catalogue, reading it takes a fifth of one processor at most.
constexpr int PAUSES_TO_WORK = 4;

} // namespace

ApplicationCatalogue::ApplicationCatalogue(
    XdgEnvironment environment, const Roles& roles, proc::Report report
)
    : environment(std::move(environment)),
      roles(roles),
      report(std::move(report)),
      catalogue(buildCatalogue(this->environment, roles)),
      folders(thread)
{
    folders.onChanged = [this] { planReload(); };
}

ApplicationCatalogue::~ApplicationCatalogue()
{
    thread.stop();
}

void ApplicationCatalogue::start()
{
    thread.post([this] { reload(); });
    thread.start();
}

std::shared_ptr<const Catalogue> ApplicationCatalogue::current() const
{
    const std::scoped_lock lock(mutex);
    return catalogue;
}

void ApplicationCatalogue::reload()
{
    const auto begin = proc::PollThread::Clock::now();
    planned = false;
    // Watched before it is read, so that no change falls between the two.
    if (!folders.setFolders(catalogueFolders(environment)) && !std::exchange(complained, true)) {
        report("Not every folder of applications can be watched: some changes are noticed late");
    }
    std::shared_ptr<const Catalogue> read = buildCatalogue(environment, roles);
    {
        const std::scoped_lock lock(mutex);
        catalogue = std::move(read);
    }
    const auto took =
        std::chrono::ceil<std::chrono::milliseconds>(proc::PollThread::Clock::now() - begin);
    pause = std::max(SHORTEST_PAUSE, took * PAUSES_TO_WORK);
    if (onChanged) {
        onChanged();
    }
}

void ApplicationCatalogue::planReload()
{
    if (!std::exchange(planned, true)) {
        thread.postAfter(pause, [this] { reload(); });
    }
}

} // namespace xdg
