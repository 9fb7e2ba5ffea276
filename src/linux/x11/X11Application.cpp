#include "linux/x11/X11Application.h"

#include <unistd.h>

namespace x11 {

X11Application::X11Application(
    X11Guard& guard, platform::DispatchQueues& queues, workspace::WindowSystem& windowSystem
)
    : guard(guard),
      queues(queues),
      windowSystem(windowSystem)
{
}

void X11Application::setPresentationOptions(unsigned options)
{
    switchingDisabled = (options & platform::PRESENTATION_DISABLE_PROCESS_SWITCHING) != 0;
    if (switchingDisabled) {
        guard.cover();
        return;
    }
    queues.asyncMain(lifetime.guard([this] { uncoverUnlessDisabledAgain(); }));
}

void X11Application::activate(bool ignoringOtherApps)
{
    if (guard.hasKeyWindow()) {
        guard.focusKeyWindow();
    } else if (ignoringOtherApps) {
        windowSystem.bringForward(getpid());
    }
}

void X11Application::bringForward(std::uintptr_t nativeWindow)
{
    if (guard.hasKeyWindow()) {
        guard.focusKeyWindow();
    } else {
        windowSystem.bringWindowForward(nativeWindow);
    }
}

void X11Application::uncoverUnlessDisabledAgain() const
{
    if (!switchingDisabled) {
        guard.uncover();
    }
}

} // namespace x11
