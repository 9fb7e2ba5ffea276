#pragma once

#include "platform/KeyboardStatus.h"

#include <utility>

namespace fakes {

class FakeKeyboardStatus final : public platform::KeyboardStatus
{
public:
    bool capsLockOn() override { return capsLock; }

    std::string layoutName() override { return layout; }

    void observe(std::function<void()> changed) override { handler = std::move(changed); }

    void set(bool capsLockIsOn, const std::string& layoutIs)
    {
        capsLock = capsLockIsOn;
        layout = layoutIs;
        const std::function<void()> changed = handler;
        if (changed) {
            changed();
        }
    }

    std::function<void()> handler;

private:
    bool capsLock = false;
    std::string layout = "us";
};

} // namespace fakes
