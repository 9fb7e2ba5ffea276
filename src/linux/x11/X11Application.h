// This program among the others on an X11 desktop. Main thread only.
#pragma once

#include "linux/workspace/WindowSystem.h"
#include "linux/x11/X11Guard.h"
#include "platform/Application.h"
#include "platform/DispatchQueues.h"
#include "platform/Lifetime.h"

namespace x11 {

class X11Application final : public platform::Application
{
public:
    /// All of them must outlive this. `windowSystem` finds this program's own windows where there
    /// is no lock.
    X11Application(
        X11Guard& guard, platform::DispatchQueues& queues, workspace::WindowSystem& windowSystem
    );

    void setPresentationOptions(unsigned options) override;
    void activate(bool ignoringOtherApps) override;
    void bringForward(std::uintptr_t nativeWindow) override;

private:
    void uncoverUnlessDisabledAgain() const;

    X11Guard& guard;
    platform::DispatchQueues& queues;
    workspace::WindowSystem& windowSystem;
    bool switchingDisabled = false;
    platform::Lifetime lifetime;
};

} // namespace x11
