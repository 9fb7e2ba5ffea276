// Makes lock windows, and is the user in front of the latest one. Outlives them. One thread.
#pragma once

#include "fakes/FakeLockWindow.h"

#include <memory>

namespace fakes {

class FakeLockWindows
{
public:
    explicit FakeLockWindows(Calls& calls) : calls(calls) {}

    locking::LockWindowFactory factory()
    {
        return [this] {
            auto window = std::make_unique<FakeLockWindow>(calls, ++count);
            latest = window.get();
            return window;
        };
    }

    [[nodiscard]] bool isLocked() const { return latest != nullptr && latest->isUp; }

    void type(const std::string& text) const
    {
        const auto callback = latest->passwordEntered;
        callback(text);
    }

    void pressSpecialKey() const
    {
        const auto callback = latest->specialKeyPressed;
        callback();
    }

    FakeLockWindow* latest = nullptr;
    int count = 0;

private:
    Calls& calls;
};

} // namespace fakes
