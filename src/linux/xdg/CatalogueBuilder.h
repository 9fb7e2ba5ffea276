// Makes catalogues of what is installed, the next one from what changed since the last. One thread
// at a time.
#pragma once

#include "linux/xdg/Catalogue.h"
#include "linux/xdg/ChosenApplication.h"
#include "linux/xdg/DesktopEntryReader.h"
#include "linux/xdg/ExecutionKeys.h"
#include "linux/xdg/FolderWatch.h"
#include "linux/xdg/ProgramResolver.h"
#include "linux/xdg/Roles.h"
#include "linux/xdg/XdgEnvironment.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace xdg {

/// Who is to stay recognisable.
struct Choice
{
    /// Identifiers of applications and of roles; nothing while the choice is not known yet: all
    /// that are kept then count.
    std::optional<std::set<std::string>> identifiers;
    ChosenApplications kept; // what they were known by so far
};

class CatalogueBuilder
{
public:
    /// Both must outlive this.
    CatalogueBuilder(const XdgEnvironment& environment, const Roles& roles);

    /// Told of each folder before it is read, also of one that is missing.
    void setBeforeReading(const std::function<void(const std::string& folder)>& listener);

    /// Told of the place of each program that counts, which may be a link.
    void setOnProgram(const std::function<void(const std::string& place)>& listener);

    /// Never empty. Brings what is kept of the choice up to date.
    std::shared_ptr<const Catalogue> build(Choice& choice);

    /// False where nothing that was read is out of date by that.
    bool forget(const FolderChanges& changes);

private:
    struct Draft
    {
        std::vector<InstalledApplication> applications; // sorted by id
        std::vector<std::string> interpreters;
    };

    void add(Draft& draft, DesktopEntry entry) const;
    void addServices(Draft& draft);
    void addChosen(Draft& draft, const std::vector<DesktopEntry>& hidden, Choice& choice) const;
    void
    addUncovered(Draft& draft, const std::vector<DesktopEntry>& hidden, const Choice& choice) const;
    void keep(InstalledApplication& application, ChosenApplication& kept) const;
    [[nodiscard]] ExecutionKeys keysOf(const DesktopEntry& entry) const;
    static void addKeys(InstalledApplication& application, ExecutionKeys found, Draft& draft);

    const XdgEnvironment& environment;
    const Roles& roles;
    ProgramResolver programs;
    DesktopEntryReader reader;
};

} // namespace xdg
