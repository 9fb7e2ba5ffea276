// The lock's hold on the X display: on a connection and a thread of its own, so that neither a busy
// main thread nor a toolkit delays it. Covers the whole desktop, keeps the lock's windows above
// everything that appears, captures keyboard and pointer and hands them to the key window.
// Commands may come from any thread; they return at once and are done in order. When its connection
// is lost, and with it all that covers, one line is reported, `onLost` is called, and every later
// command does nothing.
#pragma once

#include "linux/x11/Connection.h"
#include "linux/x11/GuardLoop.h"
#include "linux/x11/WakeUp.h"
#include "platform/DispatchQueues.h"
#include "platform/Lifetime.h"
#include "platform/Report.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace x11 {

class X11Guard
{
public:
    /// A lock window got or lost the input focus. Main thread.
    std::function<void(bool focused)> onFocusChanged;

    /// Once, when nothing is covered or captured any more and never will be. Main thread.
    std::function<void()> onLost;

    /// `report` is called on the guard's thread.
    X11Guard(
        std::unique_ptr<Connection> connection,
        platform::DispatchQueues& queues,
        platform::Report report
    );
    ~X11Guard();
    X11Guard(const X11Guard&) = delete;
    X11Guard& operator=(const X11Guard&) = delete;
    X11Guard(X11Guard&&) = delete;
    X11Guard& operator=(X11Guard&&) = delete;

    void cover();
    void uncover();

    void show(xcb_window_t window, int level);
    void hide(xcb_window_t window);
    void destroy(xcb_window_t window);

    void makeKey(xcb_window_t window, int level);
    void release(xcb_window_t window);
    void focusKeyWindow();

    /// A window was made key and is not released yet.
    bool hasKeyWindow() const;

    /// Every keyboard and pointer is held for this program.
    bool captured() const { return isCaptured; }

    /// How often windows were raised so far.
    unsigned long raises() const { return raiseCount; }

    const Connection& connection() const { return *display; }

private:
    using Command = std::function<void(GuardLoop& loop)>;

    void post(Command command);
    void run();
    bool runCommands();
    void readEvents();
    void publish();
    void announceLoss();

    std::unique_ptr<Connection> display;
    platform::DispatchQueues& queues;
    platform::Report report;
    GuardLoop loop;
    WakeUp wakeUp;
    std::atomic<bool> isCaptured = false;
    std::atomic<unsigned long> raiseCount = 0;
    bool wasFocused = false; // the guard's thread only
    platform::Lifetime lifetime;

    mutable std::mutex mutex; // guards what follows
    std::vector<Command> commands;
    std::set<xcb_window_t> keyWindows;
    bool stopping = false;

    std::thread thread;
};

} // namespace x11
