#include "linux/xdg/DesktopEntryReader.h"

#include "linux/proc/FileDescriptor.h"
#include "linux/xdg/KeyFile.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace xdg {

namespace {

namespace fs = std::filesystem;

constexpr off_t LARGEST_FILE = off_t{1024} * 1024;
constexpr int DEEPEST_FOLDER = 8;
constexpr std::string_view SUFFIX = ".desktop";

/// The text of a regular file of sensible size.
std::optional<std::string> textOf(const std::string& path)
{
    // Without blocking: a pipe in the folder must not hold anything up.
    const proc::FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));

    struct stat status
    {
    };

    if (!file.valid() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > LARGEST_FILE) {
        return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t filled = 0;
    while (filled < text.size()) {
        const ssize_t size = ::read(file.get(), text.data() + filled, text.size() - filled);
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size <= 0) {
            break;
        }
        filled += static_cast<std::size_t>(size);
    }
    text.resize(filled);
    return text;
}

/// Sorted.
std::vector<std::string> namesIn(const fs::path& folder)
{
    std::error_code error;
    std::vector<std::string> names;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// Visits the files below a folder, each folder once though links may lead to it again.
class Walk
{
public:
    void run(const fs::path& folder, const std::string& prefix, int depth)
    {
        struct stat status
        {
        };

        if (depth > DEEPEST_FOLDER || ::stat(folder.c_str(), &status) != 0 ||
            !visited.emplace(status.st_dev, status.st_ino).second) {
            return;
        }
        for (const std::string& name : namesIn(folder)) {
            const fs::path path = folder / name;
            if (name.ends_with(SUFFIX)) {
                files.emplace_back(
                    prefix + name.substr(0, name.size() - SUFFIX.size()), path.string()
                );
            } else if (std::error_code ignored; fs::is_directory(path, ignored)) {
                run(path, prefix + name + "-", depth + 1);
            }
        }
    }

    std::vector<std::pair<std::string, std::string>> files;

private:
    std::set<std::pair<dev_t, ino_t>> visited;
};

std::optional<BusService> serviceOf(const std::string& text)
{
    BusService service;
    visitKeys(text, [&](const KeyLine& line) {
        if (line.group == "D-BUS Service" && line.key == "Name") {
            service.name = line.value;
        } else if (line.group == "D-BUS Service" && line.key == "Exec") {
            service.exec = line.value;
        }
        return true;
    });
    return service.name.empty() || service.exec.empty() ? std::nullopt : std::optional(service);
}

std::vector<BusService> servicesIn(const fs::path& folder)
{
    std::vector<BusService> result;
    for (const std::string& name : namesIn(folder)) {
        const std::optional<std::string> text = textOf((folder / name).string());
        std::optional<BusService> service = text ? serviceOf(*text) : std::nullopt;
        if (service) {
            result.push_back(std::move(*service));
        }
    }
    return result;
}

} // namespace

DesktopEntryReader::DesktopEntryReader(
    const XdgEnvironment& environment, const ProgramResolver& programs
)
    : environment(environment),
      programs(programs),
      parser(localeNames(environment.locale))
{
}

std::vector<DesktopEntry> DesktopEntryReader::entries() const
{
    std::map<std::string, DesktopEntry> found; // the first folder that has an entry counts
    const auto add = [&](const File& file) {
        std::optional<DesktopEntry> entry = found.contains(file.id) ? std::nullopt : read(file);
        if (entry) {
            found.emplace(file.id, std::move(*entry));
        }
    };
    for (const std::string& folder : environment.dataFolders) {
        const auto files = filesIn(folder + "/applications");
        std::for_each(files.begin(), files.end(), add);
    }
    std::vector<DesktopEntry> result;
    for (auto& [id, entry] : found) {
        if (!entry.hidden) {
            result.push_back(std::move(entry));
        }
    }
    return result;
}

std::optional<DesktopEntry> DesktopEntryReader::read(const File& file) const
{
    const std::optional<std::string> text = textOf(file.path);
    std::optional<DesktopEntry> entry = text ? parser.parse(*text) : std::nullopt;
    if (entry) {
        entry->id = file.id;
        entry->path = file.path;
        // Without its program the entry is as good as deleted, too.
        entry->hidden =
            entry->hidden || (!entry->tryExec.empty() && !programs.find(entry->tryExec));
    }
    return entry;
}

std::vector<BusService> DesktopEntryReader::services() const
{
    std::map<std::string, BusService> found;
    for (const std::string& folder : environment.dataFolders) {
        for (BusService& service : servicesIn(folder + "/dbus-1/services")) {
            std::string name = service.name;
            found.emplace(std::move(name), std::move(service));
        }
    }
    std::vector<BusService> result;
    result.reserve(found.size());
    for (auto& [name, service] : found) {
        result.push_back(std::move(service));
    }
    return result;
}

std::vector<DesktopEntryReader::File> DesktopEntryReader::filesIn(const std::string& folder)
{
    Walk walk;
    walk.run(folder, "", 0);
    std::vector<File> result;
    result.reserve(walk.files.size());
    for (auto& [id, path] : walk.files) {
        result.push_back({std::move(id), std::move(path)});
    }
    return result;
}

} // namespace xdg
