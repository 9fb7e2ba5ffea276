#include "linux/xdg/XdgBundles.h"

#include "linux/files/Names.h"
#include "linux/session/Programs.h"
#include "linux/xdg/ProgramResolver.h"
#include "linux/xdg/XdgFileManager.h"

#include <array>
#include <filesystem>
#include <string_view>
#include <utility>

#include <unistd.h>

namespace xdg {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view SUFFIX = ".app";

/// The folder named after one of the product's programs, with the program in it.
std::optional<platform::Bundle> ownLayout(const fs::path& folder)
{
    constexpr std::array PROGRAMS{
        std::pair{session::AGENT, session::IDENTIFIER},
        std::pair{session::HELPER, session::HELPER_IDENTIFIER}};
    for (const auto& [name, identifier] : PROGRAMS) {
        if (folder.filename() == name + std::string(SUFFIX) &&
            ::access((folder / name).c_str(), X_OK) == 0) {
            return platform::Bundle{folder.string(), name, name, identifier};
        }
    }
    return std::nullopt;
}

} // namespace

XdgBundles::XdgBundles(const ApplicationCatalogue& catalogue, const std::string& executable)
    : catalogue(catalogue),
      main{
          fs::path(executable).parent_path().string(),
          session::AGENT,
          fs::path(executable).filename().string(),
          session::IDENTIFIER}
{
}

XdgBundles::XdgBundles(const ApplicationCatalogue& catalogue)
    : XdgBundles(catalogue, realPath("/proc/self/exe"))
{
}

std::optional<platform::Bundle> XdgBundles::open(const std::string& path)
{
    const std::optional<std::string> id = idOfBundlePath(path);
    if (!id) {
        return ownLayout(fs::path(path).lexically_normal());
    }
    const std::shared_ptr<const Catalogue> current = catalogue.current();
    const InstalledApplication* application = current->find(*id);
    if (application == nullptr) {
        return std::nullopt;
    }
    platform::Bundle bundle{path, application->entry.name, std::nullopt, *id};
    if (!application->executable.empty()) {
        bundle.executable = std::string(files::baseName(application->executable));
    }
    return bundle;
}

std::optional<std::string>
XdgBundles::pathForResource(const std::string& name, const std::string& type)
{
    const fs::path path = fs::path(main.path) / "Resources" / (name + "." + type);
    std::error_code error;
    return fs::is_regular_file(path, error) ? std::optional(path.string()) : std::nullopt;
}

} // namespace xdg
