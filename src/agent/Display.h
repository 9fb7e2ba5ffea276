// What the agent does on the X11 display: the two connections of the lock and the ports that stand
// on them. Main thread; the connections have threads of their own.
#pragma once

#include "linux/qt/QtX11Connection.h"
#include "linux/x11/X11Application.h"
#include "linux/x11/X11EventMonitors.h"
#include "linux/x11/X11KeyboardStatus.h"
#include "linux/x11/X11Screens.h"
#include "linux/x11/X11WindowSystem.h"
#include "linux/x11/X11Windows.h"
#include "platform/Report.h"

#include <memory>
#include <utility>

namespace agent {

/// Open connections, neither of them null: what the guard holds up must not wait behind a question.
struct DisplayConnections
{
    std::unique_ptr<x11::Connection> forGuard;
    std::unique_ptr<x11::Connection> forQuestions;
};

struct Display
{
    Display(
        DisplayConnections connections,
        platform::DispatchQueues& queues,
        platform::Timers& timers,
        const platform::Report& report
    )
        : guard(std::move(connections.forGuard), queues, report),
          desktop(std::move(connections.forQuestions), queues, report),
          windowSystem(desktop, guard, timers),
          application(guard, queues, windowSystem),
          eventMonitors(desktop, guard, timers),
          keyboardStatus(desktop),
          screens(desktop),
          windows(guard, desktop, qt::syncWithX11)
    {
    }

    x11::X11Guard guard;
    x11::X11Desktop desktop;
    x11::X11WindowSystem windowSystem;
    x11::X11Application application;
    x11::X11EventMonitors eventMonitors;
    x11::X11KeyboardStatus keyboardStatus;
    x11::X11Screens screens;
    x11::X11Windows windows;
};

} // namespace agent
