// What others are shown of an instance: a record of the running application, and icons. Any thread.
#pragma once

#include "linux/workspace/Instance.h"
#include "platform/RunningApplication.h"

#include <functional>
#include <string>

namespace workspace {

/// Any thread may call it; the icon for a theme name or an absolute path, never empty.
using LoadIcon = std::function<platform::IconHandle(const std::string& nameOrPath)>;

class ApplicationRecords
{
public:
    explicit ApplicationRecords(LoadIcon loadIcon);

    platform::RunningApplication of(const Instance& instance) const;

    /// The icon for a theme name or an absolute path, a general one for none.
    platform::IconHandle icon(const std::string& nameOrPath) const;

private:
    LoadIcon loadIcon;
};

} // namespace workspace
