#include "applications/ApplicationEntity.h"

#include "platform/Bundles.h"
#include "platform/Fatal.h"
#include "platform/Platform.h"
#include "platform/Workspace.h"

#include <utility>

namespace applications {

namespace {

bool isMissing(const std::optional<std::string>& text)
{
    return !text.has_value() || text->empty();
}

std::string displayName(const platform::Bundle& bundle)
{
    if (!isMissing(bundle.name)) {
        return *bundle.name;
    }
    return isMissing(bundle.executable) ? "Unnamed" : *bundle.executable;
}

} // namespace

ApplicationEntity::ApplicationEntity()
{
    platform::fatal("ApplicationEntity: init() is not implemented");
}

ApplicationEntity::ApplicationEntity(
    const std::optional<std::string>& name,
    const std::optional<std::string>& bundleIdentifier,
    platform::IconHandle icon
)
    : name(name.value_or(std::string())),
      bundleIdentifier(bundleIdentifier.value_or(std::string())),
      icon(std::move(icon))
{
}

ApplicationEntityPtr ApplicationEntity::fromApplicationPath(const std::string& path)
{
    const std::optional<platform::Bundle> bundle = platform::current().bundles.open(path);
    if (!bundle.has_value() || isMissing(bundle->identifier)) {
        return nullptr;
    }
    return std::make_shared<ApplicationEntity>(
        displayName(*bundle), bundle->identifier, platform::current().workspace.iconForFile(path)
    );
}

ApplicationEntityPtr ApplicationEntity::fromBundleIdentifier(const std::string& bundleIdentifier)
{
    const platform::Platform& platform = platform::current();
    const std::optional<std::string> path =
        platform.workspace.absolutePathForAppBundle(bundleIdentifier);
    if (!path.has_value()) {
        return nullptr;
    }
    platform::IconHandle icon = platform.workspace.iconForFile(*path);
    const std::optional<platform::Bundle> bundle = platform.bundles.open(*path);
    return std::make_shared<ApplicationEntity>(
        bundle.has_value() ? bundle->name : std::nullopt, bundleIdentifier, std::move(icon)
    );
}

ApplicationEntityPtr
ApplicationEntity::fromRunningApplication(const platform::RunningApplication& application)
{
    return std::make_shared<ApplicationEntity>(
        application.localizedName, application.bundleIdentifier, application.icon
    );
}

std::string ApplicationEntity::description() const
{
    return bundleIdentifier;
}

} // namespace applications
