#include "linux/proc/ProcessEvents.h"

#include "platform/Call.h"

#include <array>
#include <utility>

namespace proc {

namespace {

// A watched file is reported when it is opened, some time before the process shows it.
constexpr std::array LOOKS_AFTER_EXECUTION{
    std::chrono::milliseconds(1),
    std::chrono::milliseconds(2),
    std::chrono::milliseconds(4),
    std::chrono::milliseconds(8),
    std::chrono::milliseconds(16),
    std::chrono::milliseconds(32)};

} // namespace

ProcessEvents::ProcessEvents(platform::Report report, ProcessEventsOptions options)
    : report(std::move(report)),
      options(std::move(options)),
      connector(thread, this->options.connector),
      exits(thread, processes),
      scan(processes),
      executables(thread, this->options.openExecutableWatch)
{
    wire();
}

ProcessEvents::~ProcessEvents()
{
    thread.stop();
}

void ProcessEvents::wire()
{
    processes.onExhausted = [this] {
        if (!std::exchange(exhaustionTold, true)) {
            report(
                "There are no file descriptors left to look at processes with: starts are missed "
                "until their windows appear"
            );
        }
    };
    connector.onAccepted = [this] {
        chosen = Source::Connector;
        report("Process events: the kernel's process connector");
        snapshot();
    };
    connector.onRefused = [this](const std::string& reason) { fallBack(reason); };
    connector.onLost = [this] { snapshot(); };
    connector.onExec = [this](pid_t pid) {
        const std::optional<ProcessFacts> facts = processes.facts(pid, isOfInterest);
        if (facts) {
            platform::call(onExec, *facts);
        }
    };
    scan.onExec = [this](const ProcessFacts& facts) { platform::call(onExec, facts); };
    exits.onExit = [this](pid_t pid, std::uint64_t startTime) {
        platform::call(onExit, pid, startTime);
    };
    executables.onExecuted = [this] { lookSoon(); };
}

void ProcessEvents::start()
{
    thread.post([this] { connector.start(); });
    thread.start();
}

void ProcessEvents::watchExit(pid_t pid, std::uint64_t startTime)
{
    thread.post([this, pid, startTime] { exits.watch(pid, startTime); });
}

void ProcessEvents::watchExecutables(std::set<std::string> paths)
{
    thread.post([this, paths = std::move(paths)]() mutable {
        executablePaths = std::move(paths);
        if (chosen == Source::Executables) {
            executables.setExecutables(executablePaths);
        }
    });
}

void ProcessEvents::fallBack(const std::string& reason)
{
    if (executables.start()) {
        executables.setExecutables(executablePaths);
        chosen = Source::Executables;
        report(
            "Process events: watched executables, as the process connector is refused (" + reason +
            "); a program that is not an application's own file is noticed late"
        );
    } else {
        chosen = Source::Scan;
        report(
            "Process events: a scan of /proc, as the process connector is refused (" + reason +
            "); starts are noticed late, and very short ones not at all"
        );
    }
    snapshot();
    scanRepeatedly(chosen == Source::Executables ? options.slowScanInterval : options.scanInterval);
}

void ProcessEvents::snapshot()
{
    const std::vector<ProcessFacts> all =
        chosen == Source::Connector ? processes.allFacts() : scan.prime();
    platform::call(onSnapshot, all);
}

void ProcessEvents::scanRepeatedly(std::chrono::milliseconds interval)
{
    thread.postAfter(interval, [this, interval] {
        scan.look();
        scanRepeatedly(interval);
    });
}

void ProcessEvents::lookSoon()
{
    looksDone = 0;
    scan.look();
    if (!lookPlanned) {
        lookAgain();
    }
}

void ProcessEvents::lookAgain()
{
    lookPlanned = looksDone < LOOKS_AFTER_EXECUTION.size();
    if (!lookPlanned) {
        return;
    }
    thread.postAfter(LOOKS_AFTER_EXECUTION.at(looksDone++), [this] {
        scan.look();
        lookAgain();
    });
}

} // namespace proc
