#include "linux/xdg/XdgFileManager.h"

#include <filesystem>
#include <string_view>
#include <system_error>

namespace xdg {

namespace {

constexpr std::string_view SUFFIX = ".app";

/// Without doubled and final slashes.
std::string plainPath(const std::string& path)
{
    std::string plain = std::filesystem::path(path).lexically_normal().string();
    while (plain.size() > 1 && plain.back() == '/') {
        plain.pop_back();
    }
    return plain;
}

std::optional<std::vector<std::string>> namesIn(const std::string& folder)
{
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    return error ? std::nullopt : std::optional(std::move(names));
}

} // namespace

std::string bundlePath(const std::string& id)
{
    return std::string(APPLICATIONS_FOLDER).append("/").append(id).append(SUFFIX);
}

std::optional<std::string> idOfBundlePath(const std::string& path)
{
    const std::string plain = plainPath(path);
    const std::string prefix = std::string(APPLICATIONS_FOLDER) + "/";
    const bool inside = plain.starts_with(prefix) && plain.ends_with(SUFFIX) &&
                        plain.find('/', prefix.size()) == std::string::npos &&
                        plain.size() > prefix.size() + SUFFIX.size();
    return inside ? std::optional(
                        plain.substr(prefix.size(), plain.size() - prefix.size() - SUFFIX.size())
                    )
                  : std::nullopt;
}

std::optional<std::vector<std::string>> XdgFileManager::contentsOfDirectory(const std::string& path)
{
    return plainPath(path) == APPLICATIONS_FOLDER ? shownBundles() : namesIn(path);
}

std::vector<std::string> XdgFileManager::shownBundles() const
{
    std::vector<std::string> names;
    for (const InstalledApplication& application : catalogue.current()->all()) {
        if (application.shown) {
            names.push_back(application.entry.id + std::string(SUFFIX));
        }
    }
    return names;
}

} // namespace xdg
