#include "linux/xdg/DesktopEntryReader.h"

#include "linux/xdg/DesktopEntryParser.h"
#include "linux/xdg/KeyFile.h"
#include "platform/Text.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace xdg {

namespace {

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

/// What was chosen is kept as a list of ids: one that would not come back as it was cannot be.
bool canBeKept(const std::string& id)
{
    return platform::text::isValidUtf8(id) && id.find_first_of(";\r\n") == std::string::npos &&
           platform::text::trimmed(id) == id;
}

} // namespace

DesktopEntryReader::DesktopEntryReader(
    const XdgEnvironment& environment, const ProgramResolver& programs
)
    : environment(environment),
      programs(programs),
      entryFiles(
          ".desktop",
          [parser = DesktopEntryParser(localeNames(environment.locale))](const std::string& text) {
              return parser.parse(text);
          }
      ),
      serviceFiles(".service", serviceOf)
{
    serviceFiles.stayFlat();
}

void DesktopEntryReader::setBeforeReading(
    const std::function<void(const std::string& folder)>& listener
)
{
    entryFiles.beforeListing = listener;
    serviceFiles.beforeListing = listener;
}

InstalledEntries DesktopEntryReader::entries()
{
    InstalledEntries result;
    std::map<std::string, DesktopEntry> found; // the first folder that has an entry counts
    for (DesktopEntry& entry : allEntries()) {
        if (!found.emplace(entry.id, entry).second) {
            result.hidden.push_back(std::move(entry));
        }
    }
    for (auto& [id, entry] : found) {
        (entry.hidden ? result.hidden : result.counting).push_back(std::move(entry));
    }
    return result;
}

std::vector<DesktopEntry> DesktopEntryReader::allEntries()
{
    std::vector<DesktopEntry> result;
    for (const std::string& folder : environment.dataFolders) {
        auto items = entryFiles.below(folder + "/applications");
        std::erase_if(items, [](const auto& item) { return !canBeKept(item.id); });
        for (auto& item : items) {
            DesktopEntry& entry = result.emplace_back(std::move(item.value));
            entry.id = std::move(item.id);
            entry.path = std::move(item.path);
            judge(entry);
        }
    }
    return result;
}

/// Without its program an entry is as good as deleted, too.
void DesktopEntryReader::judge(DesktopEntry& entry)
{
    entry.homemade = entry.path.starts_with(environment.dataFolders.front() + "/");
    entry.hidden = entry.hidden || (!entry.tryExec.empty() && !programs.find(entry.tryExec));
}

std::vector<BusService> DesktopEntryReader::services()
{
    std::map<std::string, BusService> found;
    for (const std::string& folder : environment.dataFolders) {
        for (auto& item : serviceFiles.below(folder + "/dbus-1/services")) {
            std::string name = item.value.name;
            found.emplace(std::move(name), std::move(item.value));
        }
    }
    std::vector<BusService> result;
    result.reserve(found.size());
    for (auto& [name, service] : found) {
        result.push_back(std::move(service));
    }
    return result;
}

bool DesktopEntryReader::forget(const std::set<std::string>& folders)
{
    const bool known = std::any_of(folders.begin(), folders.end(), [this](const auto& folder) {
        return entryFiles.knows(folder) || serviceFiles.knows(folder);
    });
    entryFiles.forget(folders);
    serviceFiles.forget(folders);
    return known;
}

void DesktopEntryReader::forgetAll()
{
    entryFiles.forgetAll();
    serviceFiles.forgetAll();
}

} // namespace xdg
