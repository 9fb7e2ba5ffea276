#include "linux/xdg/XdgApplicationIndex.h"

#include "linux/xdg/XdgFileManager.h"

#include <algorithm>

namespace xdg {

namespace {

workspace::KnownApplicationPtr known(const InstalledApplication* application)
{
    if (application == nullptr) {
        return nullptr;
    }
    return std::make_shared<workspace::KnownApplication>(workspace::KnownApplication{
        .identifier = application->entry.id,
        .name = application->entry.name,
        .iconName = application->entry.icon,
        .bundlePath = bundlePath(application->entry.id),
        .executable = application->executable,
        .shown = application->shown,
    });
}

} // namespace

workspace::KnownApplicationPtr XdgApplicationIndex::ofProcess(const proc::ProcessFacts& facts) const
{
    return known(catalogue.current()->ofProcess(facts, [this](pid_t pid) {
        return processes.launchClaim(pid);
    }));
}

workspace::KnownApplicationPtr XdgApplicationIndex::ofWindow(const workspace::WindowFacts& facts
) const
{
    return known(catalogue.current()->ofWindow(facts.windowClass, facts.instanceName));
}

workspace::KnownApplicationPtr XdgApplicationIndex::withIdentifier(const std::string& identifier
) const
{
    const std::shared_ptr<const Catalogue> current = catalogue.current();
    const InstalledApplication* own = current->find(identifier);
    return known(own != nullptr ? own : current->playing(identifier));
}

bool XdgApplicationIndex::plays(const std::string& identifier, const std::string& role) const
{
    const std::shared_ptr<const Catalogue> current = catalogue.current();
    const InstalledApplication* application = current->find(identifier);
    return application != nullptr &&
           std::find(application->roles.begin(), application->roles.end(), role) !=
               application->roles.end();
}

std::set<std::string> XdgApplicationIndex::executables() const
{
    return catalogue.current()->files();
}

} // namespace xdg
