// A tracker that is told what happens, says what it concludes, and lives in a time of its own.
#pragma once

#include "Facts.h"
#include "linux/workspace/InstanceTracker.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace workspace {

class TrackerTest : public testing::Test
{
protected:
    TrackerTest()
    {
        tracker.onStarted = note("started");
        tracker.onWindowShown = note("window");
        tracker.onEnded = note("ended");
        tracker.onHandedOver = note("handed over");
        tracker.ask.survivorsOf = [this](const Instance&) { return survivors; };
        tracker.onStartedAgain = note("started again");
        tracker.ask.now = [this] { return time; };
        tracker.ask.shareProgram = [this](const std::string& one, const std::string& other) {
            return office.contains(one) && office.contains(other);
        };
        tracker.ask.mayHandOver = tracker.ask.shareProgram;
        tracker.ask.isAlive = [this](pid_t pid, std::uint64_t) { return !dead.contains(pid); };
    }

    std::function<void(const Instance&)> note(const std::string& what)
    {
        return [this, what](const Instance& instance) {
            said.push_back(what + " " + instance.application->identifier);
        };
    }

    void start(pid_t pid, const std::string& name, const std::vector<pid_t>& ancestors = {})
    {
        tracker.processStarted({process(pid, name), known(name), ancestors});
    }

    /// A window of the process appears.
    void show(pid_t pid, std::uint64_t window = 1)
    {
        tracker.windowShown(tracker.instances().ofProcess(pid), window);
    }

    /// A window appears that says it is the application's, in a process that does not.
    void showOf(pid_t pid, const std::string& name, std::uint64_t window)
    {
        const auto instance = tracker.instances().ofProcessAs(name, pid);
        tracker.windowShown(
            instance != nullptr
                ? instance
                : tracker.startedByWindow({process(pid, "soffice.bin"), known(name), {}}),
            window
        );
    }

    void end(pid_t pid) { tracker.processEnded(pid, static_cast<std::uint64_t>(pid) * 10); }

    InstanceTracker tracker;
    std::vector<std::string> said;
    std::vector<proc::ProcessFacts> survivors;
    std::set<pid_t> dead;
    std::set<std::string> office{"calc", "writer"};
    Clock::time_point time{std::chrono::hours(1)};
};

} // namespace workspace
