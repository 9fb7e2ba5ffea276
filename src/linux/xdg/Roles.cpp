#include "linux/xdg/Roles.h"

#include "linux/xdg/KeyFile.h"
#include "linux/xdg/RolesData.h"
#include "linux/xdg/Words.h"

#include <algorithm>

namespace xdg {

namespace {

using Names = std::vector<std::string>;

bool hasCategory(const DesktopEntry& entry, std::string_view wanted)
{
    if (!wanted.starts_with('*')) {
        return isOneOf(wanted, entry.categories);
    }
    wanted.remove_prefix(1);
    return std::any_of(entry.categories.begin(), entry.categories.end(), [&](const auto& category) {
        return category.ends_with(wanted);
    });
}

/// `combination`: such as "System+Monitor+-ConsoleOnly".
bool hasCombination(const DesktopEntry& entry, std::string_view combination)
{
    while (!combination.empty()) {
        const std::size_t end = std::min(combination.find('+'), combination.size());
        const std::string_view part = combination.substr(0, end);
        const bool forbidden = part.starts_with('-');
        if (hasCategory(entry, part.substr(forbidden ? 1 : 0)) == forbidden) {
            return false;
        }
        combination.remove_prefix(std::min(end + 1, combination.size()));
    }
    return true;
}

} // namespace

Roles::Roles(std::string_view text)
{
    visitKeys(text, [this](const KeyLine& line) {
        Role& role = roles[std::string(line.group)];
        if (line.key == "Applications") {
            role.applications = splitList(line.value);
        } else if (line.key == "Never") {
            role.never = splitList(line.value);
        } else if (line.key == "Categories") {
            role.categories = splitList(line.value);
        }
        return true;
    });
}

const Roles& Roles::shipped()
{
    static const Roles shippedRoles(ROLES_DATA);
    return shippedRoles;
}

std::vector<std::string> Roles::of(const DesktopEntry& entry) const
{
    Names result;
    for (const auto& [name, role] : roles) {
        if (plays(role, entry)) {
            result.push_back(name);
        }
    }
    return result;
}

bool Roles::plays(const Role& role, const DesktopEntry& entry)
{
    // What runs inside a terminal is none, nor anything else with windows of its own.
    if (entry.terminal || isOneOf(entry.id, role.never)) {
        return false;
    }
    return isOneOf(entry.id, role.applications) ||
           std::any_of(role.categories.begin(), role.categories.end(), [&](const auto& wanted) {
               return hasCombination(entry, wanted);
           });
}

std::size_t Roles::preference(const std::string& role, const std::string& id) const
{
    const auto found = roles.find(role);
    if (found == roles.end()) {
        return 0;
    }
    const Names& names = found->second.applications;
    return static_cast<std::size_t>(std::find(names.begin(), names.end(), id) - names.begin());
}

} // namespace xdg
