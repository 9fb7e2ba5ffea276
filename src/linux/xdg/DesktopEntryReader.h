// Reads the desktop entries of the applications that are installed, from the file system. What
// cannot be read or is damaged is passed over. Keeps nothing, so any thread may call.
#pragma once

#include "linux/xdg/DesktopEntry.h"
#include "linux/xdg/DesktopEntryParser.h"
#include "linux/xdg/ProgramResolver.h"
#include "linux/xdg/XdgEnvironment.h"

#include <optional>
#include <string>
#include <vector>

namespace xdg {

/// A service of the session bus.
struct BusService
{
    std::string name;
    std::string exec;
};

class DesktopEntryReader
{
public:
    DesktopEntryReader(const XdgEnvironment& environment, const ProgramResolver& programs);

    /// One entry for each id: that of the most important folder. Neither deleted ones nor ones
    /// whose program is missing. Sorted by id.
    [[nodiscard]] std::vector<DesktopEntry> entries() const;

    [[nodiscard]] std::vector<BusService> services() const;

private:
    struct File
    {
        std::string id;
        std::string path;
    };

    [[nodiscard]] static std::vector<File> filesIn(const std::string& folder);
    [[nodiscard]] std::optional<DesktopEntry> read(const File& file) const;

    const XdgEnvironment& environment;
    const ProgramResolver& programs;
    DesktopEntryParser parser;
};

} // namespace xdg
