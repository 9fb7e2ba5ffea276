#include "linux/xdg/LinkPlaces.h"

#include <deque>
#include <filesystem>
#include <system_error>

namespace xdg {

namespace {

namespace fs = std::filesystem;

// As many as the kernel follows.
constexpr std::size_t MOST_LINKS = 40;

void putBefore(std::deque<fs::path>& rest, const fs::path& target)
{
    rest.insert(rest.begin(), target.begin(), target.end());
}

} // namespace

std::vector<LinkPlace> linkPlaces(const std::string& path)
{
    std::vector<LinkPlace> result;
    std::deque<fs::path> rest;
    putBefore(rest, path);
    fs::path folder = "/";
    while (!rest.empty() && result.size() < MOST_LINKS) {
        const fs::path name = rest.front();
        rest.pop_front();
        if (name.empty() || name == "." || name == "..") {
            folder = name == ".." ? folder.parent_path() : folder;
            continue;
        }
        // A path that begins at the root begins anew.
        const fs::path place = folder / name;
        std::error_code none;
        const fs::path target = fs::read_symlink(place, none);
        if (none) {
            folder = place;
        } else {
            result.push_back({folder.string(), name.string()});
            putBefore(rest, target);
        }
    }
    return result;
}

} // namespace xdg
