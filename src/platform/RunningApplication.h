// One running application: the leading process of it in this user's session. A value.
#pragma once

#include "platform/Icon.h"

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

enum class ActivationPolicy
{
    Regular = 0,
    Accessory = 1,
    Prohibited = 2,
};

struct RunningApplication
{
    std::int32_t processIdentifier = 0;
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> localizedName;
    std::optional<std::string> executableUrl; // absolute path of the executable
    std::optional<std::string> bundleUrl;     // path of the application bundle
    ActivationPolicy activationPolicy = ActivationPolicy::Prohibited;
    IconHandle icon;
};

} // namespace platform
