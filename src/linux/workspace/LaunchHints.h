// Launchers' announcements of starts whose processes are still to come. Main thread.
#pragma once

#include "linux/workspace/Instance.h"

#include <map>
#include <string>

namespace workspace {

class LaunchHints
{
public:
    /// Between a launcher's hint and the exec that it hints at.
    static constexpr std::chrono::seconds LONGEST_HINT{5};

    void add(const std::string& identifier, Clock::time_point now) { hints[identifier] = now; }

    /// The announced start is here: the next one of the application is another.
    void remove(const std::string& identifier) { hints.erase(identifier); }

    /// What was announced is no longer: the next start of each is one of its own.
    void clear() { hints.clear(); }

    /// Whether a start of the application was announced and is still to be expected.
    [[nodiscard]] bool announces(const std::string& identifier, Clock::time_point now) const
    {
        const auto hint = hints.find(identifier);
        return hint != hints.end() && now - hint->second <= LONGEST_HINT;
    }

private:
    std::map<std::string, Clock::time_point> hints; // the latest, by application
};

} // namespace workspace
