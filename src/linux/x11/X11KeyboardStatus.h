// Caps Lock and the active layout, as the keyboard extension tells. Main thread only.
#pragma once

#include "linux/x11/X11Desktop.h"
#include "platform/KeyboardStatus.h"

#include <vector>

namespace x11 {

class X11KeyboardStatus final : public platform::KeyboardStatus
{
public:
    /// It must outlive this.
    explicit X11KeyboardStatus(X11Desktop& desktop);

    bool capsLockOn() override { return capsLock; }

    std::string layoutName() override;

    bool hasSeveralLayouts() override { return layouts.size() > 1; }

    void nextLayout() override;

    void observe(std::function<void()> handler) override;

private:
    void handle(const xcb_generic_event_t& event);
    void handleKeyboardEvent(const xcb_generic_event_t& event);
    void readState();
    void readLayouts();
    void set(bool capsLockIsOn, std::size_t activeGroup);
    void notify() const;

    const X11Desktop& desktop;
    std::function<void()> handler;
    bool capsLock = false;
    std::size_t group = 0;
    std::vector<std::string> layouts; // one a group
    X11Desktop::Subscription subscription;
};

} // namespace x11
