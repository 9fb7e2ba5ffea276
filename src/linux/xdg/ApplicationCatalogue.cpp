#include "linux/xdg/ApplicationCatalogue.h"

#include "platform/Call.h"

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
    XdgEnvironment environment,
    const Roles& roles,
    platform::Report report,
    const std::string& chosenFile
)
    : environment(std::move(environment)),
      report(std::move(report)),
      builder(this->environment, roles),
      file(chosenFile, this->report),
      folders(thread),
      keeping(!chosenFile.empty())
{
    if (keeping) {
        choice.kept = file.read();
    }
    catalogue = builder.build(choice);
    folders.onChanged = [this](const FolderChanges& changes) { planReload(changes); };
    builder.setBeforeReading([this](const std::string& folder) { watch(folder); });
    builder.setOnProgram([this](const std::string& place) { folders.watchLinks(place); });
}

ApplicationCatalogue::~ApplicationCatalogue()
{
    thread.stop();
}

void ApplicationCatalogue::start()
{
    thread.post([this] { follow(); });
    thread.start();
}

std::shared_ptr<const Catalogue> ApplicationCatalogue::current() const
{
    const std::scoped_lock lock(mutex);
    return catalogue;
}

void ApplicationCatalogue::choose(std::set<std::string> identifiers)
{
    thread.post([this, identifiers = std::move(identifiers)] {
        if (choice.identifiers != identifiers) {
            choice.identifiers = identifiers;
            rebuild();
        }
    });
}

void ApplicationCatalogue::learn(const std::string& id, const ExecutionKey& key)
{
    thread.post([this, id, key] {
        ChosenApplication more{.id = id};
        more.keys = {key};
        merge(learned.try_emplace(id, more).first->second, more);
        if (choice.kept.contains(id)) {
            rebuild();
        }
    });
}

/// True when that made a chosen application known by more.
bool ApplicationCatalogue::keepLearned()
{
    bool isMore = false;
    for (const auto& [id, more] : learned) {
        const auto kept = choice.kept.find(id);
        if (kept != choice.kept.end()) {
            const ChosenApplication before = kept->second;
            merge(kept->second, more);
            isMore = isMore || kept->second != before;
        }
    }
    return isMore;
}

void ApplicationCatalogue::follow()
{
    if (!folders.start() && !std::exchange(complained, true)) {
        report("The folders of applications cannot be watched: changes count from the next start");
    }
    changed.everything = true;
    reload();
}

void ApplicationCatalogue::watch(const std::string& folder)
{
    if (!folders.watch(folder) && !std::exchange(complained, true)) {
        report("Not every folder of applications can be watched: some changes are noticed late");
    }
}

void ApplicationCatalogue::reload()
{
    planned = false;
    for (const std::string& folder : environment.programFolders) {
        watch(folder);
    }
    if (builder.forget(std::exchange(changed, {}))) {
        rebuild();
    }
}

void ApplicationCatalogue::rebuild()
{
    const auto begin = proc::PollThread::Clock::now();
    std::shared_ptr<const Catalogue> read = builder.build(choice);
    if (keepLearned()) {
        read = builder.build(choice);
    }
    if (keeping) {
        file.write(choice.kept);
    }
    {
        const std::scoped_lock lock(mutex);
        catalogue = std::move(read);
    }
    const auto took =
        std::chrono::ceil<std::chrono::milliseconds>(proc::PollThread::Clock::now() - begin);
    pause = std::max(SHORTEST_PAUSE, took * PAUSES_TO_WORK);
    platform::call(onChanged);
}

void ApplicationCatalogue::planReload(const FolderChanges& changes)
{
    changed.add(changes);
    if (!std::exchange(planned, true)) {
        thread.postAfter(std::max(pause, SHORTEST_PAUSE), [this] { reload(); });
    }
}

} // namespace xdg
