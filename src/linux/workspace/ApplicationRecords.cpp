#include "linux/workspace/ApplicationRecords.h"

#include <utility>

namespace workspace {

namespace {

platform::ActivationPolicy policyOf(const Instance& instance)
{
    if (instance.application->shown || instance.windowShown) {
        return platform::ActivationPolicy::Regular;
    }
    return instance.application->background ? platform::ActivationPolicy::Prohibited
                                            : platform::ActivationPolicy::Accessory;
}

} // namespace

ApplicationRecords::ApplicationRecords(LoadIcon loadIcon) : loadIcon(std::move(loadIcon)) {}

platform::RunningApplication ApplicationRecords::of(const Instance& instance) const
{
    const KnownApplication& application = *instance.application;
    return {
        .processIdentifier = instance.leader.pid,
        .bundleIdentifier = application.identifier,
        .localizedName = application.name,
        .executableUrl = instance.leader.executable,
        .bundleUrl = application.bundlePath,
        .activationPolicy = policyOf(instance),
        .icon = loadIcon(application.iconName),
    };
}

platform::IconHandle ApplicationRecords::icon(const std::string& nameOrPath) const
{
    return loadIcon(nameOrPath);
}

} // namespace workspace
