// Applications that are installed on, or run on, the fake desktop.
#pragma once

#include "fakes/FakePlatform.h"

#include <string>

namespace fakes {

/// A regular application with everything that one has.
inline platform::RunningApplication
runningApplication(int processIdentifier, const std::string& identifier, const std::string& name)
{
    return {
        .processIdentifier = processIdentifier,
        .bundleIdentifier = identifier,
        .localizedName = name,
        .executableUrl = "/usr/bin/" + identifier,
        .bundleUrl = "/Applications/" + identifier + ".app",
        .activationPolicy = platform::ActivationPolicy::Regular,
        .icon = std::make_shared<FakeIcon>("running " + identifier),
    };
}

inline platform::RunningApplication
runningAccessory(int processIdentifier, const std::string& identifier, const std::string& name)
{
    platform::RunningApplication application =
        runningApplication(processIdentifier, identifier, name);
    application.activationPolicy = platform::ActivationPolicy::Accessory;
    return application;
}

inline void addBundle(
    FakePlatform& platform,
    const std::string& path,
    const std::string& name,
    const std::string& identifier
)
{
    platform.bundles.bundles[path] = {path, name, name, identifier};
}

/// Known to the desktop by its identifier.
inline void
installApplication(FakePlatform& platform, const std::string& identifier, const std::string& name)
{
    const std::string path = "/Applications/" + identifier + ".app";
    platform.workspace.installed[identifier] = path;
    addBundle(platform, path, name, identifier);
}

} // namespace fakes
