// Windows on no screen. Each has a number, counted from 1 in order of creation. Records every call.
// Outlives its windows; one thread.
#pragma once

#include "fakes/Calls.h"
#include "platform/Windows.h"

#include <map>

namespace fakes {

class FakeWindows final : public platform::Windows
{
public:
    explicit FakeWindows(Calls& calls) : calls(calls) {}

    struct State
    {
        platform::WindowAttributes attributes;
        bool visible = false;
    };

    std::unique_ptr<platform::PlainWindow> createWindow(const platform::WindowAttributes& attributes
    ) override
    {
        const int number = ++latest;
        calls.push_back("windows create " + std::to_string(number));
        windows[number] = {attributes, false};
        return std::make_unique<FakeWindow>(*this, number);
    }

    std::unique_ptr<platform::PlainWindow> adoptWindow(
        std::uintptr_t /*nativeWindow*/, const platform::WindowAttributes& attributes
    ) override
    {
        const int number = ++latest;
        calls.push_back("windows adopt " + std::to_string(number));
        windows[number] = {attributes, false};
        return std::make_unique<FakeWindow>(*this, number);
    }

    void excludeFromWindowsMenu(std::uintptr_t /*nativeWindow*/) override
    {
        calls.push_back("windows excludeFromWindowsMenu");
    }

    bool composited() override { return blending; }

    [[nodiscard]] int visibleCount() const
    {
        int count = 0;
        for (const auto& [number, state] : windows) {
            count += state.visible ? 1 : 0;
        }
        return count;
    }

    std::map<int, State> windows;
    bool blending = false;

private:
    class FakeWindow final : public platform::PlainWindow
    {
    public:
        FakeWindow(FakeWindows& owner, int number) : owner(owner), number(number) {}

        FakeWindow(const FakeWindow&) = delete;
        FakeWindow& operator=(const FakeWindow&) = delete;
        FakeWindow(FakeWindow&&) = delete;
        FakeWindow& operator=(FakeWindow&&) = delete;

        ~FakeWindow() override { owner.windows[number].visible = false; }

        void makeKeyAndOrderFront() override
        {
            owner.calls.push_back("window " + std::to_string(number) + " makeKeyAndOrderFront");
            owner.windows[number].visible = true;
        }

        void close() override
        {
            owner.calls.push_back("window " + std::to_string(number) + " close");
            owner.windows[number].visible = false;
        }

    private:
        FakeWindows& owner;
        int number;
    };

    Calls& calls;
    int latest = 0;
};

} // namespace fakes
