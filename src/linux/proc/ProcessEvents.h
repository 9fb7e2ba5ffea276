// What this user's processes do: who executes what, who ended. It chooses at run time among the
// sources that the kernel allows, says in one line which it is, and reports from a thread of its
// own, in the order in which things happened. Constructor and destructor belong to one thread, the
// operations may be called from any.
#pragma once

#include "linux/proc/ExecutableWatch.h"
#include "linux/proc/PollThread.h"
#include "linux/proc/ProcFilesystem.h"
#include "linux/proc/ProcessConnector.h"
#include "linux/proc/ProcessExits.h"
#include "linux/proc/ProcessScan.h"
#include "platform/Report.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace proc {

struct ProcessEventsOptions
{
    ProcessConnectorOptions connector;
    std::function<int()> openExecutableWatch = ExecutableWatch::openGroup;
    /// Between two looks at /proc where nothing announces an exec.
    std::chrono::milliseconds scanInterval{20};
    /// The same where the executables of applications are watched.
    std::chrono::milliseconds slowScanInterval{250};
};

class ProcessEvents
{
public:
    enum class Source
    {
        None, // not chosen yet
        Connector,
        Executables,
        Scan,
    };

    explicit ProcessEvents(platform::Report report, ProcessEventsOptions options = {});
    ProcessEvents(const ProcessEvents&) = delete;
    ProcessEvents& operator=(const ProcessEvents&) = delete;
    ProcessEvents(ProcessEvents&&) = delete;
    ProcessEvents& operator=(ProcessEvents&&) = delete;
    ~ProcessEvents();

    /// A process of this user executes something. Set before `start`, as are the others.
    std::function<void(const ProcessFacts& facts)> onExec;

    /// Asked on the events' thread about each exec before anything else of the process is read:
    /// most are of no interest, and this keeps them cheap. Unset: all are.
    ProcFilesystem::Interest isOfInterest;

    /// A watched process ended.
    std::function<void(pid_t pid, std::uint64_t startTime)> onExit;

    /// All that runs, oldest first: once the source stands, and again whenever it lost events.
    std::function<void(const std::vector<ProcessFacts>& all)> onSnapshot;

    void start();

    /// Reports the end of that process, at once when it has ended already.
    void watchExit(pid_t pid, std::uint64_t startTime);

    /// The files that applications consist of; needed by one of the sources only.
    void watchExecutables(std::set<std::string> paths);

    [[nodiscard]] Source source() const { return chosen; }

private:
    void wire();
    void fallBack(const std::string& reason);
    void snapshot();
    void scanRepeatedly(std::chrono::milliseconds interval);
    void lookSoon();
    void lookAgain();

    platform::Report report;
    ProcessEventsOptions options;
    ProcFilesystem processes;
    PollThread thread;
    ProcessConnector connector;
    ProcessExits exits;
    ProcessScan scan;
    ExecutableWatch executables;
    std::set<std::string> executablePaths; // this and the rest belong to the thread
    std::size_t looksDone = 0;             // since a watched file was executed
    bool lookPlanned = false;
    bool exhaustionTold = false;
    std::atomic<Source> chosen{Source::None};
};

} // namespace proc
