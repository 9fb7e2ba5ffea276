// Caps Lock and the layout as the test sets them; the observer hears of each change at once.
// One thread.
#pragma once

#include "platform/KeyboardStatus.h"

#include <string>
#include <utility>
#include <vector>

namespace fakes {

class FakeKeyboardStatus final : public platform::KeyboardStatus
{
public:
    bool capsLockOn() override { return capsLock; }

    std::string layoutName() override { return layouts.at(active); }

    bool hasSeveralLayouts() override { return layouts.size() > 1; }

    void nextLayout() override
    {
        if (hasSeveralLayouts()) {
            active = (active + 1) % layouts.size();
            notify();
        }
    }

    void observe(std::function<void()> changed) override { handler = std::move(changed); }

    void set(bool capsLockIsOn, const std::string& layoutIs)
    {
        capsLock = capsLockIsOn;
        setLayouts({layoutIs});
    }

    /// The first of them is active; there is at least one.
    void setLayouts(std::vector<std::string> all)
    {
        layouts = std::move(all);
        active = 0;
        notify();
    }

    std::function<void()> handler;

private:
    void notify() const
    {
        const std::function<void()> changed = handler;
        if (changed) {
            changed();
        }
    }

    bool capsLock = false;
    std::vector<std::string> layouts{"us"};
    std::size_t active = 0;
};

} // namespace fakes
