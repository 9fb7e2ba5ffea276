// Reads the desktop entries of the applications that are installed, and the services of the session
// bus, from the file system. What cannot be read or is damaged is passed over. Keeps what it read,
// until that is forgotten. One thread at a time.
#pragma once

#include "linux/xdg/DesktopEntry.h"
#include "linux/xdg/FolderCache.h"
#include "linux/xdg/ProgramResolver.h"
#include "linux/xdg/XdgEnvironment.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace xdg {

/// A service of the session bus.
struct BusService
{
    std::string name;
    std::string exec;
};

struct InstalledEntries
{
    /// One entry for each id: that of the most important folder. Neither deleted ones nor ones
    /// whose program is missing. Sorted by id.
    std::vector<DesktopEntry> counting;
    /// What those hide, the deleted ones and the ones whose program is missing.
    std::vector<DesktopEntry> hidden;
};

class DesktopEntryReader
{
public:
    /// Both must outlive this.
    DesktopEntryReader(const XdgEnvironment& environment, const ProgramResolver& programs);

    /// Told of each folder before it is read, also of one that is missing.
    void setBeforeReading(const std::function<void(const std::string& folder)>& listener);

    [[nodiscard]] InstalledEntries entries();
    [[nodiscard]] std::vector<BusService> services();

    /// Something changed in these folders. False where they are none of those that were read.
    bool forget(const std::set<std::string>& folders);
    void forgetAll();

private:
    /// Of every folder, the preferred folder first.
    std::vector<DesktopEntry> allEntries();

    /// By where it stands and by what it needs.
    void judge(DesktopEntry& entry);

    const XdgEnvironment& environment;
    const ProgramResolver& programs;
    FolderCache<DesktopEntry> entryFiles;
    FolderCache<BusService> serviceFiles;
};

} // namespace xdg
