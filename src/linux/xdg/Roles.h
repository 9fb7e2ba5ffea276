// The parts that applications play under names known everywhere: terminal, system monitor, keyring
// manager, settings. Pure; what plays which part stands in the data file it is made from.
#pragma once

#include "linux/xdg/DesktopEntry.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace xdg {

class Roles
{
public:
    /// `text` is that of the data file.
    explicit Roles(std::string_view text);

    /// The roles that come with the program.
    static const Roles& shipped();

    /// Identifiers of the roles that the application plays.
    [[nodiscard]] std::vector<std::string> of(const DesktopEntry& entry) const;

    /// Lower for an application that stands earlier in the role's list; those that only their
    /// categories brought in come last.
    [[nodiscard]] std::size_t preference(const std::string& role, const std::string& id) const;

private:
    struct Role
    {
        std::vector<std::string> applications;
        std::vector<std::string> never;
        /// Each is a set of categories joined by '+', of which an application has all; one that
        /// begins with '*' stands for all that end so, one after '-' must not be there.
        std::vector<std::string> categories;
    };

    static bool plays(const Role& role, const DesktopEntry& entry);

    std::map<std::string, Role> roles;
};

} // namespace xdg
