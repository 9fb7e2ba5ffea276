#include "linux/xdg/Catalogue.h"

#include "linux/xdg/FileText.h"
#include "linux/xdg/Interpreters.h"
#include "linux/xdg/ProgramResolver.h"
#include "platform/Text.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace xdg {

namespace {

bool isFile(const std::string& path)
{
    return stampOf(path).has_value();
}

void append(std::vector<std::size_t>& indices, std::optional<std::size_t> index)
{
    if (index) {
        indices.push_back(*index);
    }
}

} // namespace

Catalogue::Catalogue(Parts parts, const Preference& preference)
    : applications(std::move(parts.applications))
{
    for (std::size_t index = 0; index < this->applications.size(); ++index) {
        byId[this->applications[index].entry.id] = index;
        for (const std::string& role : this->applications[index].roles) {
            offerForRole(role, index, preference);
        }
    }
    for (const std::string& folder : parts.searchFolders) {
        programFolders.insert(realPath(folder));
    }
    identities.setSearchFolders(std::move(parts.searchFolders));
    fillTables(parts.interpreters);
}

void Catalogue::offerForRole(
    const std::string& role, std::size_t index, const Preference& preference
)
{
    const auto rank = [&](std::size_t candidate) {
        const InstalledApplication& application = applications[candidate];
        return std::tuple(preference(role, application.entry.id), !application.shown, candidate);
    };
    const auto [place, added] = byRole.emplace(role, index);
    if (!added && rank(index) < rank(place->second)) {
        place->second = index;
    }
}

void Catalogue::fillTables(const std::vector<std::string>& interpreters)
{
    for (const std::string& interpreter : interpreters) {
        identities.addInterpreter(interpreter);
    }
    // Shown ones first, then by id: the order in which ties are broken.
    std::vector<std::size_t> order(applications.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](std::size_t left, std::size_t right) {
        return applications[left].shown && !applications[right].shown;
    });
    for (std::size_t preference = 0; preference < order.size(); ++preference) {
        const std::size_t index = order[preference];
        for (const ExecutionKey& key : applications[index].keys) {
            const InstalledApplication& application = applications[index];
            identities.add(
                index,
                {.preference = preference,
                 .chosen = application.chosen,
                 .homemade = application.entry.homemade},
                key
            );
        }
    }
    // A name that several bear is that of the chosen one.
    std::stable_sort(order.begin(), order.end(), [this](std::size_t left, std::size_t right) {
        return applications[left].chosen && !applications[right].chosen;
    });
    for (const WindowName part : {WindowName::Class, WindowName::Id, WindowName::LastPart}) {
        for (const std::size_t index : order) {
            fillWindowNames(index, part);
        }
    }
}

void Catalogue::fillWindowNames(std::size_t index, WindowName part)
{
    const InstalledApplication& application = applications[index];
    const DesktopEntry& entry = application.entry;
    // What runs inside a terminal shows the terminal's windows. One that was chosen had windows of
    // its own, whatever its entry says now.
    if (entry.terminal && !application.chosen) {
        return;
    }
    std::vector<std::string> names{entry.id};
    if (part == WindowName::Class) {
        names = application.windowClasses;
        names.push_back(entry.startupWindowClass);
    } else if (part == WindowName::LastPart) {
        names = {entry.id.substr(entry.id.rfind('.') + 1)};
    }
    constexpr std::size_t SHORTEST = 3;
    for (const std::string& name : names) {
        if (name.size() >= SHORTEST) {
            byWindow.emplace(platform::text::lowercase(name), index);
        }
    }
}

const InstalledApplication* Catalogue::find(const std::string& id) const
{
    const auto found = byId.find(id);
    return found == byId.end() ? nullptr : &applications[found->second];
}

const InstalledApplication* Catalogue::ofEntry(const std::string& path) const
{
    const std::optional<std::size_t> index = path.starts_with('/') ? claimed(path) : std::nullopt;
    return index ? &applications[*index] : nullptr;
}

const InstalledApplication* Catalogue::playing(const std::string& role) const
{
    const auto found = byRole.find(role);
    return found == byRole.end() ? nullptr : &applications[found->second];
}

const InstalledApplication*
Catalogue::ofProcess(const proc::ProcessFacts& facts, const Claims& claims) const
{
    const auto indices = [&](pid_t pid) {
        std::vector<std::size_t> result;
        for (const std::string& claim : claims(pid)) {
            append(result, claimed(claim));
        }
        return result;
    };
    const std::optional<std::size_t> index =
        identities.find(facts, {.realPath = realPath, .exists = isFile, .claims = indices});
    return index ? &applications[*index] : nullptr;
}

bool Catalogue::mayBeExecutedBy(const std::string& executable) const
{
    return identities.mayFind(executable);
}

std::optional<std::size_t> Catalogue::claimed(const std::string& pathOrId) const
{
    if (!pathOrId.starts_with('/')) {
        const auto found = byId.find(pathOrId);
        return found == byId.end() ? std::nullopt : std::optional(found->second);
    }
    const auto found =
        std::find_if(applications.begin(), applications.end(), [&](const auto& application) {
            return application.entry.path == pathOrId;
        });
    return found == applications.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(found - applications.begin()));
}

const InstalledApplication* Catalogue::ofWindow(const std::vector<std::string>& names) const
{
    for (const std::string& name : names) {
        const auto found = byWindow.find(platform::text::lowercase(name));
        if (!name.empty() && found != byWindow.end()) {
            return &applications[found->second];
        }
    }
    return nullptr;
}

const InstalledApplication*
Catalogue::ofCopy(ExecutionKey::Kind kind, const std::string& file) const
{
    const auto isOriginal = [&](const ExecutionKey& key) {
        return !key.shared && key.kind == kind && key.path != file && isCopyOf(file, key.path);
    };
    const auto found =
        std::find_if(applications.begin(), applications.end(), [&](const auto& application) {
            return application.chosen &&
                   std::any_of(application.keys.begin(), application.keys.end(), isOriginal);
        });
    return found == applications.end() ? nullptr : &*found;
}

bool Catalogue::runsOthers(const std::string& executable) const
{
    return identities.runsOthers(executable);
}

bool Catalogue::shareProgram(const std::string& id, const std::string& otherId) const
{
    const InstalledApplication* one = find(id);
    const auto other = byId.find(otherId);
    return one != nullptr && other != byId.end() &&
           std::any_of(one->keys.begin(), one->keys.end(), [&](const ExecutionKey& key) {
               const std::vector<std::size_t> sharers = identities.applicationsOf(key.path);
               return std::find(sharers.begin(), sharers.end(), other->second) != sharers.end();
           });
}

bool Catalogue::mayHandOver(const std::string& id, const std::string& otherId) const
{
    const InstalledApplication* one = find(id);
    const InstalledApplication* other = find(otherId);
    const auto isAlsoOther = [other](const ExecutionKey& key) {
        return !key.shared &&
               std::any_of(other->keys.begin(), other->keys.end(), [&key](const auto& more) {
                   return !more.shared && more.path == key.path;
               });
    };
    return one != nullptr && other != nullptr &&
           std::any_of(one->keys.begin(), one->keys.end(), isAlsoOther);
}

/// An application that shares its program shares what that executes in turn, too.
bool Catalogue::sharesItsPrograms(const InstalledApplication& application) const
{
    const std::size_t own = byId.at(application.entry.id);
    return std::any_of(
        application.keys.begin(),
        application.keys.end(),
        [&](const ExecutionKey& key) {
            const std::vector<std::size_t> sharers = identities.applicationsOf(key.path);
            return std::any_of(sharers.begin(), sharers.end(), [own](std::size_t index) {
                return index != own;
            });
        }
    );
}

std::optional<ExecutionKey>
Catalogue::keyToLearn(const proc::ProcessFacts& facts, const std::string& id) const
{
    const InstalledApplication* application = find(id);
    if (application == nullptr || facts.executable.empty() || sharesItsPrograms(*application)) {
        return std::nullopt;
    }
    ExecutionKey key{.path = facts.executable};
    if (identities.runsOthers(facts.executable)) {
        const auto script = scriptArgument(facts.executable, facts.arguments);
        if (!script || !script->starts_with('/') || isLoader(facts.executable)) {
            return std::nullopt;
        }
        key = {.kind = ExecutionKey::Kind::Script, .path = realPath(*script)};
    }
    const bool isOwn = identities.applicationsOf(key.path).empty() &&
                       (!isForEverybody(key.path) || ofCopy(key.kind, key.path) == application);
    return isOwn ? std::optional(std::move(key)) : std::nullopt;
}

bool Catalogue::isForEverybody(const std::string& file) const
{
    return programFolders.contains(file.substr(0, file.rfind('/')));
}

std::set<std::string> Catalogue::files() const
{
    const std::vector<std::string> all = identities.files();
    return {all.begin(), all.end()};
}

} // namespace xdg
