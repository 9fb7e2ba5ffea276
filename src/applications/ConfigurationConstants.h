// Which applications may be locked, by identifier and path. All tests are exact and case-sensitive.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace applications {

class ConfigurationConstants
{
public:
    /// This program's own identifier, read at each call, and the helper's. Fatal when the main
    /// bundle has no identifier.
    static std::vector<std::string> BANNED_APPLICATIONS_BUNDLE_IDS();

    static const std::vector<std::string> WHITE_LIST_APPLICATIONS_BUNDLE_IDS;
    static const std::vector<std::string> ADMINISTRATIVE_APPLICATIONS_BUNDLE_IDS;
    static constexpr std::string_view SYSTEM_APPLICATION_PATH_PREFIX = "/System/";
};

} // namespace applications
