// The file system as users see it: "/Applications" is the catalogue, the rest is what is there. Any
// thread.
#pragma once

#include "linux/xdg/ApplicationCatalogue.h"
#include "platform/FileManager.h"

namespace xdg {

/// Where the catalogue appears.
inline constexpr auto APPLICATIONS_FOLDER = "/Applications";

/// The path of an application's bundle.
std::string bundlePath(const std::string& id);

/// The id of the application whose bundle has the path; nothing for any other path.
std::optional<std::string> idOfBundlePath(const std::string& path);

class XdgFileManager final : public platform::FileManager
{
public:
    /// `catalogue` must outlive this.
    explicit XdgFileManager(const ApplicationCatalogue& catalogue) : catalogue(catalogue) {}

    std::optional<std::vector<std::string>> contentsOfDirectory(const std::string& path) override;

private:
    [[nodiscard]] std::vector<std::string> shownBundles() const;

    const ApplicationCatalogue& catalogue;
};

} // namespace xdg
