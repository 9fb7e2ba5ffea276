// Process events from one of the three sources, forced by refusing the better ones.
#pragma once

#include "desktop/TemporaryFolder.h"
#include "linux/proc/ProcessEvents.h"
#include "processes/Recorder.h"

#include <cerrno>
#include <string>
#include <vector>

#include <gtest/gtest.h>

inline int refused()
{
    errno = EPERM;
    return -1;
}

inline proc::ProcessEventsOptions optionsFor(proc::ProcessEvents::Source source)
{
    proc::ProcessEventsOptions options;
    if (source != proc::ProcessEvents::Source::Connector) {
        options.connector.open = refused;
    }
    if (source == proc::ProcessEvents::Source::Scan) {
        options.openExecutableWatch = refused;
    }
    return options;
}

inline std::string nameOf(const testing::TestParamInfo<proc::ProcessEvents::Source>& info)
{
    switch (info.param) {
    case proc::ProcessEvents::Source::Connector:
        return "Connector";
    case proc::ProcessEvents::Source::Executables:
        return "Executables";
    default:
        return "Scan";
    }
}

class ProcessEventsContract : public testing::TestWithParam<proc::ProcessEvents::Source>
{
protected:
    using Source = proc::ProcessEvents::Source;

    ProcessEventsContract()
    {
        events.onExec = [this](const proc::ProcessFacts& facts) { execs.add(facts); };
        events.onExit = [this](pid_t pid, std::uint64_t) { exits.add(pid); };
        events.onSnapshot = [this](const std::vector<proc::ProcessFacts>& all) {
            snapshots.add(all);
        };
    }

    /// False where this kernel does not allow the source.
    bool start()
    {
        events.watchExecutables({program});
        events.start();
        EXPECT_TRUE(snapshots.waitForOne([](const auto&) { return true; }));
        if (GetParam() == Source::Connector && events.source() != Source::Connector) {
            return false;
        }
        EXPECT_EQ(events.source(), GetParam());
        return true;
    }

    bool waitForExec(pid_t pid)
    {
        return execs.waitForOne([pid](const proc::ProcessFacts& facts) { return facts.pid == pid; }
        );
    }

    desktop::TemporaryFolder folder;
    std::string program = folder.copyProgram("/bin/sleep", "program");
    processes::Recorder<std::string> lines;
    processes::Recorder<proc::ProcessFacts> execs;
    processes::Recorder<pid_t> exits;
    processes::Recorder<std::vector<proc::ProcessFacts>> snapshots;
    proc::ProcessEvents events{
        [this](std::string_view line) { lines.add(std::string(line)); }, optionsFor(GetParam())};
};
