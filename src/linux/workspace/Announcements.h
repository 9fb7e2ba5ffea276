// Says to the observers what happened to applications, in the order in which it is told here. Main
// thread. Applications without a presence of their own are only ever seen to change the list.
#pragma once

#include "linux/workspace/ApplicationRecords.h"
#include "linux/workspace/Observers.h"

#include <optional>

namespace workspace {

class Announcements
{
public:
    /// Both must outlive this.
    Announcements(const ApplicationRecords& records, Observers& observers);

    void started(const Instance& instance);
    void startedAgain(const Instance& instance);
    void windowShown(const Instance& instance);
    void ended(const Instance& instance);

    /// The instance whose launch is being announced: its process may be that of others, too.
    const Instance* subject() const { return announced; }

    /// Empty: none is in front. Says nothing where that is no change.
    void activeChanged(const InstancePtr& instance);

private:
    void notifyLaunch(platform::WorkspaceNotificationName name, const Instance& instance);
    void notifyApplication(
        platform::WorkspaceNotificationName name, const platform::RunningApplication& application
    );

    const ApplicationRecords& records;
    Observers& observers;
    std::optional<platform::RunningApplication> active;
    const Instance* announced = nullptr;
};

} // namespace workspace
