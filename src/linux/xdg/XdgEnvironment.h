// Where this user's desktop keeps things, as the environment says.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace xdg {

struct XdgEnvironment
{
    std::string configHome;
    /// Folders such as "/usr/share", the most important first, those of the user and of the two
    /// common sandboxes included.
    std::vector<std::string> dataFolders;
    std::vector<std::string> programFolders; // PATH
    std::vector<std::string> desktops;       // names of the running desktop
    std::string locale;                      // of messages
    std::string display;                     // of X11; empty where there is none
    std::string waylandDisplay;

    using Variable = std::function<std::optional<std::string>(const char* name)>;

    /// Unset and unusable variables have the values that the desktops agreed upon.
    static XdgEnvironment from(const Variable& variable);

    /// From the environment of this process.
    static XdgEnvironment fromProcess();
};

} // namespace xdg
