// The identity of the agent and of its login-item helper.
#pragma once

#include <string>

namespace app {

class Constants
{
public:
    /// The main bundle's identifier, read at each call. Fatal when it has none.
    static std::string BUNDLE_ID();

    static constexpr auto HELPER_BUNDLE_ID = "com.quorvent.OlvoHelper";
    static constexpr auto HELPER_APP_NAME = "OlvoHelper.app";
};

} // namespace app
