#include "linux/xdg/CatalogueBuilder.h"

#include "linux/xdg/DesktopEntryReader.h"
#include "linux/xdg/ExecutionKeys.h"

#include <algorithm>
#include <utility>

namespace xdg {

namespace {

bool contains(const std::vector<std::string>& names, const std::string& name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool meets(const std::vector<std::string>& names, const std::vector<std::string>& desktops)
{
    return std::any_of(desktops.begin(), desktops.end(), [&](const std::string& desktop) {
        return contains(names, desktop);
    });
}

/// A program that runs inside a terminal is not offered: what a user would protect is the terminal.
bool isShown(const DesktopEntry& entry, const std::vector<std::string>& desktops)
{
    const bool here = (entry.onlyShowIn.empty() || meets(entry.onlyShowIn, desktops)) &&
                      !meets(entry.notShowIn, desktops);
    return here && !entry.noDisplay && !entry.terminal;
}

class Builder
{
public:
    Builder(const XdgEnvironment& environment, const Roles& roles)
        : environment(environment),
          roles(roles),
          programs(environment.programFolders),
          reader(environment, programs)
    {
    }

    std::shared_ptr<const Catalogue> build()
    {
        for (DesktopEntry& entry : reader.entries()) {
            add(std::move(entry));
        }
        for (const BusService& service : reader.services()) {
            addService(service);
        }
        return std::make_shared<const Catalogue>(
            std::move(applications),
            interpreters,
            [this](const std::string& role, const std::string& id) {
                return roles.preference(role, id);
            }
        );
    }

private:
    void add(DesktopEntry entry)
    {
        InstalledApplication application;
        application.shown = isShown(entry, environment.desktops);
        application.roles = roles.of(entry);
        // The file of a program for terminals is often one that everything else runs on, too.
        if (!entry.terminal) {
            ExecutionKeys keys = executionKeys(entry.exec, programs);
            if (!keys.keys.empty()) {
                application.executable = keys.keys.front().path;
            }
            application.keys = std::move(keys.keys);
            interpreters.insert(
                interpreters.end(), keys.interpreters.begin(), keys.interpreters.end()
            );
        }
        application.entry = std::move(entry);
        applications.push_back(std::move(application));
    }

    /// A service whose name is an application's id is that application.
    void addService(const BusService& service)
    {
        const auto found =
            std::find_if(applications.begin(), applications.end(), [&](const auto& application) {
                return application.entry.id == service.name && !application.entry.terminal;
            });
        if (found == applications.end()) {
            return;
        }
        for (ExecutionKey& key : executionKeys(service.exec, programs).keys) {
            if (found->executable.empty()) {
                found->executable = key.path;
            }
            found->keys.push_back(std::move(key));
        }
    }

    const XdgEnvironment& environment;
    const Roles& roles;
    ProgramResolver programs;
    DesktopEntryReader reader;
    std::vector<InstalledApplication> applications;
    std::vector<std::string> interpreters;
};

} // namespace

std::shared_ptr<const Catalogue>
buildCatalogue(const XdgEnvironment& environment, const Roles& roles)
{
    return Builder(environment, roles).build();
}

std::set<std::string> catalogueFolders(const XdgEnvironment& environment)
{
    std::set<std::string> folders(
        environment.programFolders.begin(), environment.programFolders.end()
    );
    for (const std::string& folder : environment.dataFolders) {
        folders.insert(folder + "/applications");
        folders.insert(folder + "/dbus-1/services");
    }
    return folders;
}

} // namespace xdg
