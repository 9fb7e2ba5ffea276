#include "linux/xdg/CatalogueBuilder.h"

#include "linux/xdg/FileText.h"
#include "linux/xdg/Words.h"

#include <algorithm>
#include <utility>

namespace xdg {

namespace {

void addKey(std::vector<ExecutionKey>& keys, const ExecutionKey& key)
{
    if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
        keys.push_back(key);
    }
}

bool meets(const std::vector<std::string>& names, const std::vector<std::string>& desktops)
{
    return std::any_of(desktops.begin(), desktops.end(), [&](const std::string& desktop) {
        return isOneOf(desktop, names);
    });
}

/// A program that runs inside a terminal is not offered: what a user would protect is the terminal.
bool isShown(const DesktopEntry& entry, const std::vector<std::string>& desktops)
{
    const bool here = (entry.onlyShowIn.empty() || meets(entry.onlyShowIn, desktops)) &&
                      !meets(entry.notShowIn, desktops);
    return here && !entry.noDisplay && !entry.terminal;
}

bool comesBefore(const InstalledApplication& application, const std::string& id)
{
    return application.entry.id < id;
}

std::vector<InstalledApplication>::iterator
placeOf(std::vector<InstalledApplication>& applications, const std::string& id)
{
    return std::lower_bound(applications.begin(), applications.end(), id, comesBefore);
}

InstalledApplication* find(std::vector<InstalledApplication>& applications, const std::string& id)
{
    const auto place = placeOf(applications, id);
    return place != applications.end() && place->entry.id == id ? &*place : nullptr;
}

bool isChosen(
    const Choice& choice, const std::string& id, const std::vector<std::string>& rolesOfIt
)
{
    if (!choice.identifiers) {
        return choice.kept.contains(id);
    }
    return choice.identifiers->contains(id) ||
           std::any_of(rolesOfIt.begin(), rolesOfIt.end(), [&](const std::string& role) {
               return choice.identifiers->contains(role);
           });
}

ChosenApplication keptOf(const InstalledApplication& application)
{
    return {
        .id = application.entry.id,
        .path = application.entry.path,
        .name = application.entry.name,
        .icon = application.entry.icon,
        .executable = application.executable,
        .startupWindowClass = application.entry.startupWindowClass,
        .roles = application.roles,
        .keys = application.keys};
}

/// An application without an entry.
InstalledApplication installedOf(const ChosenApplication& kept)
{
    InstalledApplication application;
    application.entry.id = kept.id;
    application.entry.path = kept.path;
    application.entry.name = kept.name;
    application.entry.icon = kept.icon;
    application.entry.startupWindowClass = kept.startupWindowClass;
    application.executable = kept.executable;
    return application;
}

} // namespace

CatalogueBuilder::CatalogueBuilder(const XdgEnvironment& environment, const Roles& roles)
    : environment(environment),
      roles(roles),
      programs(environment.programFolders),
      reader(environment, programs)
{
}

void CatalogueBuilder::setBeforeReading(
    const std::function<void(const std::string& folder)>& listener
)
{
    reader.setBeforeReading(listener);
}

void CatalogueBuilder::setOnProgram(const std::function<void(const std::string& place)>& listener)
{
    programs.onFound = listener;
}

bool CatalogueBuilder::forget(const FolderChanges& changes)
{
    if (changes.everything) {
        reader.forgetAll();
        programs.forgetAll();
        return true;
    }
    const bool programsChanged = programs.forget(changes.names);
    return reader.forget(changes.folders) || programsChanged;
}

std::shared_ptr<const Catalogue> CatalogueBuilder::build(Choice& choice)
{
    programs.forgetElsewhere();
    Draft draft;
    InstalledEntries entries = reader.entries();
    for (DesktopEntry& entry : entries.counting) {
        add(draft, std::move(entry));
    }
    addServices(draft);
    addChosen(draft, entries.hidden, choice);
    return std::make_shared<const Catalogue>(
        Catalogue::Parts{
            std::move(draft.applications),
            std::move(draft.interpreters),
            environment.programFolders},
        [this](const std::string& role, const std::string& id) {
            return roles.preference(role, id);
        }
    );
}

void CatalogueBuilder::add(Draft& draft, DesktopEntry entry) const
{
    InstalledApplication application;
    application.shown = isShown(entry, environment.desktops);
    application.roles = roles.of(entry);
    application.entry = std::move(entry);
    addKeys(application, keysOf(application.entry), draft);
    draft.applications.push_back(std::move(application));
}

ExecutionKeys CatalogueBuilder::keysOf(const DesktopEntry& entry) const
{
    // The file of a program for terminals is often one that everything else runs on, too.
    if (entry.terminal) {
        return {};
    }
    ExecutionKeys result = executionKeys(entry.exec, programs, entry.workingFolder);
    const ExecutionKeys more = executionKeys(entry.laterExec, programs, entry.workingFolder);
    result.keys.insert(result.keys.end(), more.keys.begin(), more.keys.end());
    result.interpreters.insert(
        result.interpreters.end(), more.interpreters.begin(), more.interpreters.end()
    );
    return result;
}

void CatalogueBuilder::addKeys(InstalledApplication& application, ExecutionKeys found, Draft& draft)
{
    if (application.executable.empty() && !found.keys.empty()) {
        application.executable = found.keys.front().path;
    }
    for (const ExecutionKey& key : found.keys) {
        addKey(application.keys, key);
    }
    draft.interpreters.insert(
        draft.interpreters.end(), found.interpreters.begin(), found.interpreters.end()
    );
}

/// A service whose name is an application's id is that application.
void CatalogueBuilder::addServices(Draft& draft)
{
    for (const BusService& service : reader.services()) {
        InstalledApplication* application = find(draft.applications, service.name);
        if (application != nullptr && !application->entry.terminal) {
            addKeys(*application, executionKeys(service.exec, programs), draft);
        }
    }
}

/// Whatever was done to the entry of a chosen application since, in a folder that anybody at the
/// desktop can write to or by a new version of its package: it keeps all that it was ever known by.
void CatalogueBuilder::addChosen(
    Draft& draft, const std::vector<DesktopEntry>& hidden, Choice& choice
) const
{
    std::erase_if(choice.kept, [&](const auto& entry) {
        return !isChosen(choice, entry.first, entry.second.roles);
    });
    for (const auto& [id, kept] : choice.kept) {
        if (find(draft.applications, id) == nullptr) {
            draft.applications.insert(placeOf(draft.applications, id), installedOf(kept));
        }
    }
    addUncovered(draft, hidden, choice);
    for (const DesktopEntry& entry : hidden) {
        InstalledApplication* application = find(draft.applications, entry.id);
        if (application != nullptr && !entry.exec.empty() &&
            isChosen(choice, entry.id, application->roles)) {
            addKeys(*application, keysOf(entry), draft);
        }
    }
    for (InstalledApplication& application : draft.applications) {
        if (isChosen(choice, application.entry.id, application.roles) ||
            choice.kept.contains(application.entry.id)) {
            keep(application, choice.kept[application.entry.id]);
        }
    }
}

/// A chosen application of which nothing was kept, and whose entry somebody hid: it is known by the
/// entry that is behind.
void CatalogueBuilder::addUncovered(
    Draft& draft, const std::vector<DesktopEntry>& hidden, const Choice& choice
) const
{
    for (const DesktopEntry& entry : hidden) {
        const bool counts = !entry.homemade && !entry.hidden && !entry.terminal &&
                            isChosen(choice, entry.id, roles.of(entry));
        if (counts && find(draft.applications, entry.id) == nullptr) {
            InstalledApplication application;
            application.entry = entry;
            application.roles = roles.of(entry);
            draft.applications.insert(placeOf(draft.applications, entry.id), application);
        }
    }
}

void CatalogueBuilder::keep(InstalledApplication& application, ChosenApplication& kept) const
{
    const std::string earlierClass = kept.startupWindowClass;
    ChosenApplication present = keptOf(application);
    // Where a program may come to be that is missing, its entry tells again.
    std::erase_if(present.keys, [](const ExecutionKey& key) { return !stampOf(key.path); });
    merge(kept, present);
    application.chosen = true;
    application.roles = kept.roles;
    for (const ExecutionKey& key : kept.keys) {
        addKey(application.keys, key);
    }
    if (!earlierClass.empty()) {
        application.windowClasses.push_back(earlierClass);
    }
}

} // namespace xdg
