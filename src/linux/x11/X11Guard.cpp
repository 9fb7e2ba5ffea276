#include "linux/x11/X11Guard.h"

#include "platform/Call.h"

#include <utility>

namespace x11 {

X11Guard::X11Guard(
    std::unique_ptr<Connection> connection,
    platform::DispatchQueues& queues,
    platform::Report report
)
    : display(std::move(connection)),
      queues(queues),
      report(std::move(report)),
      loop(*display, this->report),
      thread([this] { run(); })
{
}

X11Guard::~X11Guard()
{
    {
        const std::lock_guard lock(mutex);
        stopping = true;
    }
    wakeUp.signal();
    thread.join();
}

void X11Guard::cover()
{
    post([](GuardLoop& guard) { guard.cover(); });
}

void X11Guard::uncover()
{
    post([](GuardLoop& guard) { guard.uncover(); });
}

void X11Guard::show(xcb_window_t window, int level)
{
    post([=](GuardLoop& guard) { guard.show(window, level); });
}

void X11Guard::hide(xcb_window_t window)
{
    post([=](GuardLoop& guard) { guard.hide(window); });
}

void X11Guard::destroy(xcb_window_t window)
{
    post([=](GuardLoop& guard) { guard.destroy(window); });
}

void X11Guard::makeKey(xcb_window_t window, int level)
{
    {
        const std::lock_guard lock(mutex);
        keyWindows.insert(window);
    }
    post([=](GuardLoop& guard) { guard.makeKey(window, level); });
}

void X11Guard::release(xcb_window_t window)
{
    {
        const std::lock_guard lock(mutex);
        keyWindows.erase(window);
    }
    post([=](GuardLoop& guard) { guard.release(window); });
}

void X11Guard::focusKeyWindow()
{
    post([](GuardLoop& guard) { guard.focusKeyWindow(); });
}

bool X11Guard::hasKeyWindow() const
{
    const std::lock_guard lock(mutex);
    return !keyWindows.empty();
}

void X11Guard::post(Command command)
{
    {
        const std::lock_guard lock(mutex);
        commands.push_back(std::move(command));
    }
    wakeUp.signal();
}

void X11Guard::run()
{
    while (runCommands()) {
        readEvents();
        if (display->broken()) {
            report("the lock's connection to the X display is lost");
            isCaptured = false;
            announceLoss();
            break;
        }
        const auto due = loop.work();
        publish();
        display->flush();
        if (const Event event = display->nextQueuedEvent()) {
            loop.handle(*event); // came beside a reply; the descriptor will not tell
        } else {
            wakeUp.waitWith(*display, due);
        }
    }
    while (runCommands()) { // without a display until this program ends
        wakeUp.waitAlone();
    }
}

bool X11Guard::runCommands()
{
    std::vector<Command> taken;
    {
        const std::lock_guard lock(mutex);
        if (stopping) {
            return false;
        }
        taken.swap(commands);
    }
    for (const Command& command : taken) {
        command(loop);
    }
    return true;
}

void X11Guard::readEvents()
{
    constexpr int MOST_AT_ONCE = 512; // then commands have their turn
    for (int count = 0; count < MOST_AT_ONCE; ++count) {
        const Event event = display->nextEvent();
        if (!event) {
            return;
        }
        loop.handle(*event);
    }
}

void X11Guard::publish()
{
    isCaptured = loop.captured();
    raiseCount = loop.raises();
    if (loop.focused() == std::exchange(wasFocused, loop.focused())) {
        return;
    }
    queues.asyncMain(lifetime.guard([this, focused = wasFocused] {
        platform::call(onFocusChanged, focused);
    }));
}

void X11Guard::announceLoss()
{
    queues.asyncMain(lifetime.guard([this] { platform::call(onLost); }));
}

} // namespace x11
