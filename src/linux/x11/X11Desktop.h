// The display as the adapters other than the guard see it: one connection for their questions, and
// a thread that reads its events and hands them, in order, to every listener on the main thread.
// When the connection is lost one line is reported, `onLost` is called, no event comes any more and
// every answer is empty.
#pragma once

#include "linux/x11/Atoms.h"
#include "linux/x11/Connection.h"
#include "platform/DispatchQueues.h"
#include "platform/Lifetime.h"
#include "platform/Report.h"

#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <thread>
#include <vector>

namespace x11 {

class X11Desktop
{
public:
    using Listener = std::function<void(const xcb_generic_event_t& event)>;

    /// Once, when no answer will come any more. Main thread.
    std::function<void()> onLost;

    /// `report` is called on the reading thread.
    X11Desktop(
        std::unique_ptr<Connection> connection,
        platform::DispatchQueues& queues,
        platform::Report report
    );
    ~X11Desktop();
    X11Desktop(const X11Desktop&) = delete;
    X11Desktop& operator=(const X11Desktop&) = delete;
    X11Desktop(X11Desktop&&) = delete;
    X11Desktop& operator=(X11Desktop&&) = delete;

    const Connection& connection() const { return *display; }

    const Atoms& atoms() const { return names; }

    /// Its end ends the listening. Main thread.
    using Subscription = std::shared_ptr<const Listener>;
    [[nodiscard]] Subscription subscribe(Listener listener);

private:
    using Batch = std::vector<Event>;

    void run();
    Batch waitForEvents() const;
    void takeIfOfInterest(Event event, Batch& batch) const;
    bool isOfInterest(const xcb_generic_event_t& event) const;
    void deliverLater(std::shared_ptr<Batch> batch);
    void deliver(const Batch& batch);
    void announceLoss();

    std::unique_ptr<Connection> display;
    platform::DispatchQueues& queues;
    platform::Report report;
    Atoms names;
    std::atomic<bool> stopping = false;
    std::list<std::weak_ptr<const Listener>> listeners; // main thread
    platform::Lifetime lifetime;
    std::thread thread;
};

} // namespace x11
