// The applications that are installed, at one moment, and which of them a process or a window is.
// Never changes once it is made, so any thread may read it.
#pragma once

#include "linux/xdg/DesktopEntry.h"
#include "linux/xdg/IdentityTable.h"

#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace xdg {

struct InstalledApplication
{
    DesktopEntry entry;
    bool shown = false;             // in the lists of this desktop
    std::string executable;         // file that its command line starts; empty where it is missing
    std::vector<std::string> roles; // identifiers of the roles that it plays
    std::vector<ExecutionKey> keys;
};

class Catalogue
{
public:
    /// `interpreters`: programs that run the scripts among the keys. `preference`: lower is
    /// better, between applications that play the same role.
    using Preference = std::function<std::size_t(const std::string& role, const std::string& id)>;
    Catalogue(
        std::vector<InstalledApplication> applications,
        const std::vector<std::string>& interpreters,
        const Preference& preference
    );

    [[nodiscard]] const InstalledApplication* find(const std::string& id) const;

    /// The application to take where one is asked for that plays the role.
    [[nodiscard]] const InstalledApplication* playing(const std::string& role) const;

    [[nodiscard]] const std::vector<InstalledApplication>& all() const { return applications; }

    /// Its launcher's word, the path of a desktop entry, counts only between those that the
    /// executable leaves.
    using Claim = std::function<std::optional<std::string>(pid_t pid)>;
    [[nodiscard]] const InstalledApplication*
    ofProcess(const proc::ProcessFacts& facts, const Claim& claim) const;

    /// By the class or the instance name of a window.
    [[nodiscard]] const InstalledApplication*
    ofWindow(const std::string& windowClass, const std::string& instanceName) const;

    /// The files that the applications are executed from.
    [[nodiscard]] std::set<std::string> files() const;

private:
    void offerForRole(const std::string& role, std::size_t index, const Preference& preference);
    void fillTables(const std::vector<std::string>& interpreters);
    void fillWindowNames(std::size_t index);
    [[nodiscard]] std::optional<std::size_t> claimed(const std::string& path) const;

    std::vector<InstalledApplication> applications; // sorted by id
    std::unordered_map<std::string, std::size_t> byId;
    std::unordered_map<std::string, std::size_t> byRole;
    std::unordered_map<std::string, std::size_t> byWindow; // lower-case names
    IdentityTable identities;
};

} // namespace xdg
