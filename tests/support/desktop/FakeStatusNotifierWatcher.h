// The watcher of status notifier items, and their host, as a panel brings both to a private bus. It
// works in a thread of its own; the methods may be called from any one.
#pragma once

#include "desktop/BusConnection.h"

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace desktop {

class FakeStatusNotifierWatcher
{
public:
    /// Is there when this returns, in place of another one; throws `Failure` when it cannot be.
    explicit FakeStatusNotifierWatcher(const std::string& address, bool withHost = true);
    ~FakeStatusNotifierWatcher();
    FakeStatusNotifierWatcher(const FakeStatusNotifierWatcher&) = delete;
    FakeStatusNotifierWatcher& operator=(const FakeStatusNotifierWatcher&) = delete;
    FakeStatusNotifierWatcher(FakeStatusNotifierWatcher&&) = delete;
    FakeStatusNotifierWatcher& operator=(FakeStatusNotifierWatcher&&) = delete;

    /// The host comes or goes, and everybody is told.
    void setHost(bool present) { wantsHost = present; }

    /// While it hangs it answers nobody.
    void setHanging(bool hangs) { hanging = hangs; }

    /// While it refuses it takes no item in.
    void setRefusing(bool refuses) { refusing = refuses; }

    /// What registered so far, by the name on the bus.
    std::vector<std::string> registered() const;

private:
    void run();
    void followHost();
    static int handle(sd_bus_message* call, void* self, sd_bus_error* error);
    int takeIn(sd_bus_message* call);
    int tellProperty(sd_bus_message* call) const;

    BusConnection bus;
    bool host;
    std::atomic<bool> wantsHost;
    std::atomic<bool> hanging = false;
    std::atomic<bool> refusing = false;
    std::atomic<bool> ending = false;
    mutable std::mutex mutex;
    std::vector<std::string> names;
    std::thread thread;
};

} // namespace desktop
