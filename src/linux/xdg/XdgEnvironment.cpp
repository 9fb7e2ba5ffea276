#include "linux/xdg/XdgEnvironment.h"

#include <algorithm>
#include <cstdlib>

namespace xdg {

namespace {

std::vector<std::string> split(const std::string& text)
{
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(':', begin), text.size());
        if (end > begin) {
            parts.push_back(text.substr(begin, end - begin));
        }
        begin = end + 1;
    }
    return parts;
}

/// Relative paths do not count.
std::vector<std::string> splitFolders(const std::string& text)
{
    std::vector<std::string> folders = split(text);
    std::erase_if(folders, [](const std::string& folder) { return folder.front() != '/'; });
    return folders;
}

} // namespace

XdgEnvironment XdgEnvironment::from(const Variable& variable)
{
    const auto valueOr = [&](const char* name, const std::string& otherwise) {
        const std::optional<std::string> value = variable(name);
        return value && !value->empty() ? *value : otherwise;
    };
    const auto folderOr = [&](const char* name, const std::string& otherwise) {
        const std::string value = valueOr(name, otherwise);
        return value.front() == '/' ? value : otherwise;
    };
    const std::string home = folderOr("HOME", "/");
    const std::string dataHome = folderOr("XDG_DATA_HOME", home + "/.local/share");
    XdgEnvironment result;
    result.configHome = folderOr("XDG_CONFIG_HOME", home + "/.config");
    result.dataFolders = splitFolders(valueOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share"));
    result.dataFolders.insert(result.dataFolders.begin(), dataHome);
    result.dataFolders.push_back(dataHome + "/flatpak/exports/share");
    result.dataFolders.emplace_back("/var/lib/flatpak/exports/share");
    result.dataFolders.emplace_back("/var/lib/snapd/desktop");
    result.programFolders =
        splitFolders(valueOr("PATH", "/usr/local/bin:/usr/bin:/bin:/usr/games"));
    result.desktops = split(valueOr("XDG_CURRENT_DESKTOP", ""));
    result.locale = valueOr("LC_ALL", valueOr("LC_MESSAGES", valueOr("LANG", "C")));
    result.display = valueOr("DISPLAY", "");
    result.waylandDisplay = valueOr("WAYLAND_DISPLAY", "");
    return result;
}

XdgEnvironment XdgEnvironment::fromProcess()
{
    return from([](const char* name) {
        const char* value = ::secure_getenv(name);
        return value == nullptr ? std::nullopt : std::optional<std::string>(value);
    });
}

} // namespace xdg
