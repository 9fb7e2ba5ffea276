// The applications that are installed, at one moment, and which of them a process or a window is.
// Never changes once it is made, so any thread may read it.
#pragma once

#include "linux/xdg/DesktopEntry.h"
#include "linux/xdg/IdentityTable.h"

#include <functional>
#include <optional>
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
    std::vector<std::string> windowClasses; // besides that of the entry
    bool chosen = false;                    // for protection: what it was known by stays with it
};

class Catalogue
{
public:
    /// Lower is better, between applications that play the same role.
    using Preference = std::function<std::size_t(const std::string& role, const std::string& id)>;

    struct Parts
    {
        std::vector<InstalledApplication> applications; // sorted by id
        std::vector<std::string> interpreters;          // of the scripts among the keys
        std::vector<std::string> searchFolders;         // where shells look for programs
    };

    Catalogue(Parts parts, const Preference& preference);

    [[nodiscard]] const InstalledApplication* find(const std::string& id) const;

    /// The one with the desktop entry at this path.
    [[nodiscard]] const InstalledApplication* ofEntry(const std::string& path) const;

    /// The application to take where one is asked for that plays the role.
    [[nodiscard]] const InstalledApplication* playing(const std::string& role) const;

    [[nodiscard]] const std::vector<InstalledApplication>& all() const { return applications; }

    /// What a process is said to be, the path of a desktop entry or an id, counts only between
    /// those that the executable leaves. The best word comes first.
    using Claims = std::function<std::vector<std::string>(pid_t pid)>;
    [[nodiscard]] const InstalledApplication*
    ofProcess(const proc::ProcessFacts& facts, const Claims& claims) const;

    /// False where `ofProcess` gives nothing for whatever else executes the file. Fast.
    [[nodiscard]] bool mayBeExecutedBy(const std::string& executable) const;

    /// By one of the names that a window bears, the most telling first.
    [[nodiscard]] const InstalledApplication* ofWindow(const std::vector<std::string>& names) const;

    /// The chosen application whose program, or script, the file is a copy of, and not that itself.
    /// Reads files.
    [[nodiscard]] const InstalledApplication*
    ofCopy(ExecutionKey::Kind kind, const std::string& file) const;

    /// True for a program that runs others, and so tells nothing by itself.
    [[nodiscard]] bool runsOthers(const std::string& executable) const;

    /// True when the two are executed from the same file.
    [[nodiscard]] bool shareProgram(const std::string& id, const std::string& otherId) const;

    /// True when that file runs nothing else, either.
    [[nodiscard]] bool mayHandOver(const std::string& id, const std::string& otherId) const;

    /// The file by which such a process could be known again as the application, were it not known
    /// by anything yet: its executable or its script. Nothing where that would tell too little, as
    /// does what stands where everybody finds it, unless it is a copy.
    [[nodiscard]] std::optional<ExecutionKey>
    keyToLearn(const proc::ProcessFacts& facts, const std::string& id) const;

    /// The files that the applications are executed from.
    [[nodiscard]] std::set<std::string> files() const;

private:
    /// What a window may be known by, the most certain first.
    enum class WindowName
    {
        Class,
        Id,
        LastPart,
    };

    void offerForRole(const std::string& role, std::size_t index, const Preference& preference);
    void fillTables(const std::vector<std::string>& interpreters);
    void fillWindowNames(std::size_t index, WindowName part);
    [[nodiscard]] std::optional<std::size_t> claimed(const std::string& pathOrId) const;
    [[nodiscard]] bool sharesItsPrograms(const InstalledApplication& application) const;
    [[nodiscard]] bool isForEverybody(const std::string& file) const;

    std::vector<InstalledApplication> applications; // sorted by id
    std::unordered_map<std::string, std::size_t> byId;
    std::unordered_map<std::string, std::size_t> byRole;
    std::unordered_map<std::string, std::size_t> byWindow; // lower-case names
    std::set<std::string> programFolders;                  // free of links
    IdentityTable identities;
};

} // namespace xdg
