// Remembers across restarts which application is behind the lock window and has not been given its
// password yet. Main thread only.
#pragma once

#include "storage/KeyValueStorage.h"

#include <optional>
#include <string>

namespace locking {

class CurrentMonitoredApplicationService
{
public:
    /// The blocked application's identifier, or nothing when none is blocked.
    std::optional<std::string> currentMonitoredApplication();

    /// Replaces any earlier mark; the empty string is no mark.
    void markMinitoredApplication(const std::string& bundleIdentifier);

    void unmarkMinitoredApplication();

private:
    storage::KeyValueStorage storage{false};
};

} // namespace locking
