// Finds the instance that a window is of: by its process, or by what the window says about itself
// where the process does not tell, or may show windows of several applications. One that nothing
// else announced appears in the tracker by that: late, but certain. Main thread.
#pragma once

#include "linux/workspace/AwaitedStarts.h"
#include "linux/workspace/InstanceTracker.h"
#include "linux/workspace/OwnPrograms.h"
#include "linux/workspace/ProcessSource.h"
#include "linux/workspace/WindowSystem.h"

namespace workspace {

class WindowAttribution
{
public:
    /// All of them outlive this.
    WindowAttribution(
        InstanceTracker& tracker, ProcessSource& processes, OwnPrograms& applications
    );

    /// When a window was first seen: one that was there before this program belongs to what runs
    /// already.
    enum class Seen
    {
        AtStart,
        Now,
    };

    /// Empty for a window of no application.
    InstancePtr instanceOf(const WindowFacts& window, Seen seen) const;

private:
    InstancePtr ofProcess(const WindowFacts& window, Seen seen) const;
    InstancePtr ofStray(const WindowFacts& window, Seen seen) const;
    InstancePtr ofOther(
        const WindowFacts& window,
        const KnownApplicationPtr& application,
        InstancePtr host,
        Seen seen
    ) const;
    InstancePtr appear(const Sighting& sighting, Seen seen) const;
    KnownApplicationPtr
    applicationOf(const WindowFacts& window, const InstancePtr& host, Seen seen) const;
    bool isPartOf(const Instance& host, pid_t pid, Seen seen) const;
    bool mayShow(const InstancePtr& host, const KnownApplicationPtr& application, pid_t pid) const;
    bool mayHide(const KnownApplication& named, const Instance& host, pid_t pid) const;
    bool isDoubtful(const KnownApplication& application) const;
    void learnFrom(const WindowFacts& window, const KnownApplication& application) const;

    InstanceTracker& tracker;
    AwaitedStarts awaited;
    ProcessSource& processes;
    OwnPrograms& applications;
};

} // namespace workspace
