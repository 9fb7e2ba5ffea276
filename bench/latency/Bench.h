// Starts applications on a desktop of their own and measures how soon, and how well, the agent's
// lock covers the screens; and, in turns with them, how soon a screen locker does that starts cold.
#pragma once

#include "agent/AgentSession.h"
#include "latency/Figures.h"
#include "latency/MapWatch.h"
#include "latency/Screens.h"

#include <string>
#include <vector>

namespace latency {

class Bench
{
public:
    /// Brings the desktop and the agent up; throws `desktop::Failure` where that fails.
    Bench();

    /// Starts each program this often, in turns.
    void measure(int runs);

    void print() const;

private:
    struct Program
    {
        std::vector<std::string> command;
        bool isLocker = false; // covers the screens itself
        Figures figures;
    };

    void prepareDesktop();
    Run start(const Program& program);
    void watch(const Program& program, desktop::Clock::time_point start, Run& run);
    [[nodiscard]] double reference() const;

    agent::AgentSession session;
    std::vector<Program> programs;
    Screens screens;
    MapWatch maps;
};

} // namespace latency
