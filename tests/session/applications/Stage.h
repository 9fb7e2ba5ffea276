// A desktop with an agent on it, on which applications are started in all the ways that there are,
// and ended. What goes wrong is said in a few words; nothing said is well.
#pragma once

#include "agent/AgentSession.h"
#include "session/applications/Applications.h"
#include "session/applications/Chronicle.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace applications {

using Problem = std::optional<std::string>;

class Stage
{
public:
    /// Throws `Failure` when it does not come up.
    explicit Stage(bool isProtected);

    /// Those of this desktop.
    [[nodiscard]] const std::vector<Application>& applications() const { return all; }

    enum class Way
    {
        Entry,
        Shell,
        Bus,
    };

    /// Starts the application and follows it until its first window is there.
    Problem start(const Application& application, Way way);

    /// Once more, while it runs.
    Problem startAgain(const Application& application);

    /// Ends all that runs, and looks whether as many starts and ends were told as there were.
    Problem end(const Application& application);

    /// Where each start raises a lock.
    Problem startLocked(const Application& application, Way way);
    Problem startAgainLocked(const Application& application);
    Problem endLocked(const Application& application);

    /// For a person.
    [[nodiscard]] std::string report();

private:
    void install();
    void begin();
    void launch(const Application& application, Way way);
    desktop::ChildProcess inShell(const std::string& command);
    bool hears(const std::string& line, std::size_t times = 1);
    Problem unlock();
    Problem endAll();
    std::string windowsThatStay();
    std::set<pid_t> strangers();

    agent::AgentSession session;
    std::vector<Application> all;
    std::set<pid_t> own; // processes that ran before the application
    std::optional<Chronicle> chronicle;
    std::vector<desktop::ChildProcess> children;
    std::size_t starts = 0; // of the application, since the page was turned
    std::size_t ends = 0;   // that are to come
};

} // namespace applications
