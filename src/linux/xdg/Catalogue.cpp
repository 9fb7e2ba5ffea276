#include "linux/xdg/Catalogue.h"

#include "linux/xdg/ProgramResolver.h"
#include "platform/Text.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace xdg {

Catalogue::Catalogue(
    std::vector<InstalledApplication> applications,
    const std::vector<std::string>& interpreters,
    const Preference& preference
)
    : applications(std::move(applications))
{
    for (std::size_t index = 0; index < this->applications.size(); ++index) {
        byId[this->applications[index].entry.id] = index;
        for (const std::string& role : this->applications[index].roles) {
            offerForRole(role, index, preference);
        }
    }
    fillTables(interpreters);
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
            identities.add(index, preference, key);
        }
        fillWindowNames(index);
    }
}

void Catalogue::fillWindowNames(std::size_t index)
{
    const DesktopEntry& entry = applications[index].entry;
    // What runs inside a terminal shows the terminal's windows.
    if (entry.terminal) {
        return;
    }
    constexpr std::size_t SHORTEST_LAST_PART = 3;
    const std::string lastPart = entry.id.substr(entry.id.rfind('.') + 1);
    for (const std::string& name : {entry.startupWindowClass, entry.id, lastPart}) {
        if (name.size() >= SHORTEST_LAST_PART) {
            byWindow.emplace(platform::text::lowercase(name), index);
        }
    }
}

const InstalledApplication* Catalogue::find(const std::string& id) const
{
    const auto found = byId.find(id);
    return found == byId.end() ? nullptr : &applications[found->second];
}

const InstalledApplication* Catalogue::playing(const std::string& role) const
{
    const auto found = byRole.find(role);
    return found == byRole.end() ? nullptr : &applications[found->second];
}

const InstalledApplication*
Catalogue::ofProcess(const proc::ProcessFacts& facts, const Claim& claim) const
{
    const std::optional<std::size_t> index =
        identities.find(facts, {.realPath = realPath, .claim = [&](pid_t pid) {
                                    const std::optional<std::string> path = claim(pid);
                                    return path ? claimed(*path) : std::nullopt;
                                }});
    return index ? &applications[*index] : nullptr;
}

std::optional<std::size_t> Catalogue::claimed(const std::string& path) const
{
    const auto found =
        std::find_if(applications.begin(), applications.end(), [&](const auto& application) {
            return application.entry.path == path;
        });
    return found == applications.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(found - applications.begin()));
}

const InstalledApplication*
Catalogue::ofWindow(const std::string& windowClass, const std::string& instanceName) const
{
    for (const std::string& name : {windowClass, instanceName}) {
        const auto found = byWindow.find(platform::text::lowercase(name));
        if (!name.empty() && found != byWindow.end()) {
            return &applications[found->second];
        }
    }
    return nullptr;
}

std::set<std::string> Catalogue::files() const
{
    const std::vector<std::string> all = identities.files();
    return {all.begin(), all.end()};
}

} // namespace xdg
