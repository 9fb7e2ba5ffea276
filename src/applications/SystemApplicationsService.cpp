#include "applications/SystemApplicationsService.h"

#include "app/Constants.h"
#include "applications/ConfigurationConstants.h"
#include "applications/SortByKey.h"
#include "platform/Bundles.h"
#include "platform/FileManager.h"
#include "platform/Platform.h"
#include "platform/Text.h"
#include "platform/Workspace.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace applications {

namespace {

constexpr auto APPLICATIONS_FOLDER = "/Applications";
constexpr auto BUNDLE_SUFFIX = ".app";

std::string appendingPathComponent(const std::string& path, const std::string& component)
{
    return path.ends_with('/') ? path + component : path + "/" + component;
}

/// A dot at the very beginning hides a file, it does not begin an extension.
bool hasPathExtension(const std::string& name)
{
    const std::size_t dot = name.rfind('.');
    return dot != std::string::npos && dot > 0 && dot + 1 < name.size();
}

bool isWalkedAsFolder(const std::string& name)
{
    return platform::text::lowercase(name).find(BUNDLE_SUFFIX) == std::string::npos &&
           !hasPathExtension(name);
}

/// Empty where the path is not one of an application.
ApplicationEntityPtr applicationAt(const std::string& path)
{
    return path.ends_with(BUNDLE_SUFFIX) ? ApplicationEntity::fromApplicationPath(path) : nullptr;
}

bool contains(const std::vector<std::string>& list, const std::string& bundleIdentifier)
{
    return std::find(list.begin(), list.end(), bundleIdentifier) != list.end();
}

bool isWhiteListed(const std::string& bundleIdentifier)
{
    return contains(ConfigurationConstants::WHITE_LIST_APPLICATIONS_BUNDLE_IDS, bundleIdentifier);
}

bool isBanned(const std::string& bundleIdentifier)
{
    return contains(ConfigurationConstants::BANNED_APPLICATIONS_BUNDLE_IDS(), bundleIdentifier);
}

std::vector<ApplicationEntityPtr> sortedByName(const std::vector<ApplicationEntityPtr>& entities)
{
    return sortedByKey(entities, [](const ApplicationEntity& entity) {
        return platform::text::lowercase(entity.name);
    });
}

std::optional<platform::RunningApplication> firstInstance(const std::string& bundleIdentifier)
{
    std::vector<platform::RunningApplication> instances =
        platform::current().workspace.runningApplications(bundleIdentifier);
    return instances.empty() ? std::nullopt : std::optional(std::move(instances.front()));
}

} // namespace

std::vector<ApplicationEntityPtr> SystemApplicationsService::lockableApplications() const
{
    return sortedByName(getLockableApplicationsFrom(APPLICATIONS_FOLDER));
}

std::vector<ApplicationEntityPtr>
SystemApplicationsService::getLockableApplicationsFrom(const std::string& path) const
{
    std::vector<ApplicationEntityPtr> result;
    const std::optional<std::vector<std::string>> names =
        platform::current().fileManager.contentsOfDirectory(path);
    for (const std::string& name : names.value_or(std::vector<std::string>())) {
        const std::string entryPath = appendingPathComponent(path, name);
        ApplicationEntityPtr entity = applicationAt(entryPath);
        if (entity != nullptr && isLockableApplicationEntity(*entity)) {
            result.push_back(std::move(entity));
        }
        if (isWalkedAsFolder(name)) {
            std::vector<ApplicationEntityPtr> inner = getLockableApplicationsFrom(entryPath);
            std::move(inner.begin(), inner.end(), std::back_inserter(result));
        }
    }
    return result;
}

std::vector<ApplicationEntityPtr> SystemApplicationsService::lockableRunningApplications() const
{
    return lockableApplicationsAmong(runningNSApplications());
}

std::vector<ApplicationEntityPtr> SystemApplicationsService::lockableApplicationsAmong(
    const std::vector<platform::RunningApplication>& running
) const
{
    std::vector<ApplicationEntityPtr> result;
    for (const platform::RunningApplication& application : running) {
        if (isLockableApplication(application)) {
            result.push_back(ApplicationEntity::fromRunningApplication(application));
        }
    }
    return sortedByName(result);
}

std::vector<platform::RunningApplication> SystemApplicationsService::runningNSApplications() const
{
    return platform::current().workspace.runningApplications();
}

ApplicationEntityPtr
SystemApplicationsService::applicationIsRunning(const std::string& bundleIdentifier) const
{
    const std::optional<platform::RunningApplication> application = firstInstance(bundleIdentifier);
    return application.has_value() ? ApplicationEntity::fromRunningApplication(*application)
                                   : nullptr;
}

void SystemApplicationsService::focusOnApplication(const std::string& bundleIdentifier) const
{
    const std::optional<platform::RunningApplication> application = firstInstance(bundleIdentifier);
    if (application.has_value()) {
        platform::current().workspace.activate(
            *application, platform::ACTIVATE_IGNORING_OTHER_APPS
        );
    }
}

void SystemApplicationsService::startHelperApplication() const
{
    const platform::Platform& platform = platform::current();
    std::string path = platform.bundles.mainBundle().path;
    for (const char* component :
         {"Contents", "Library", "LoginItems", app::Constants::HELPER_APP_NAME}) {
        path = appendingPathComponent(path, component);
    }
    platform.workspace.launchApplication(
        path, platform::LAUNCH_DEFAULT, {{"StartFromMaster", "1"}}
    );
}

std::vector<ApplicationEntityPtr> SystemApplicationsService::administrativeApplications() const
{
    std::vector<ApplicationEntityPtr> result;
    for (const std::string& bundleIdentifier :
         ConfigurationConstants::ADMINISTRATIVE_APPLICATIONS_BUNDLE_IDS) {
        ApplicationEntityPtr entity = ApplicationEntity::fromBundleIdentifier(bundleIdentifier);
        if (entity != nullptr) {
            result.push_back(std::move(entity));
        }
    }
    return result;
}

bool SystemApplicationsService::isLockableApplicationEntity(const ApplicationEntity& entity) const
{
    return isWhiteListed(entity.bundleIdentifier) || !isBanned(entity.bundleIdentifier);
}

bool SystemApplicationsService::isLockableApplication(
    const platform::RunningApplication& application
) const
{
    const std::string bundleIdentifier = application.bundleIdentifier.value_or(std::string());
    if (isWhiteListed(bundleIdentifier)) {
        return true;
    }
    if (!application.localizedName.has_value() || !application.executableUrl.has_value() ||
        !application.bundleUrl.has_value()) {
        return false;
    }
    const bool isCandidate = application.activationPolicy == platform::ActivationPolicy::Regular ||
                             application.activationPolicy == platform::ActivationPolicy::Accessory;
    const bool isSystem = application.executableUrl->starts_with(
        ConfigurationConstants::SYSTEM_APPLICATION_PATH_PREFIX
    );
    return isCandidate && !isBanned(bundleIdentifier) && !isSystem;
}

} // namespace applications
