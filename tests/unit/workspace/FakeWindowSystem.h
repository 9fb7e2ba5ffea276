// Windows that appear and come to the front on command.
#pragma once

#include "linux/workspace/WindowSystem.h"

#include <algorithm>
#include <vector>

namespace workspace {

class FakeWindowSystem final : public WindowSystem
{
public:
    void start() override
    {
        for (const WindowFacts& window : windows) {
            onWindowShown(window);
        }
    }

    bool bringForward(pid_t processIdentifier) override
    {
        const bool has = std::any_of(windows.begin(), windows.end(), [&](const auto& window) {
            return window.processIdentifier == processIdentifier;
        });
        if (has) {
            forward.push_back(processIdentifier);
        }
        return has;
    }

    bool bringForward(const std::set<std::uint64_t>& wanted) override
    {
        const auto found = std::find_if(windows.begin(), windows.end(), [&](const auto& window) {
            return wanted.contains(window.window);
        });
        if (found == windows.end()) {
            return false;
        }
        forwardWindows.push_back(found->window);
        return true;
    }

    void bringWindowForward(std::uint64_t window) override { forwardWindows.push_back(window); }

    void show(const WindowFacts& window)
    {
        windows.push_back(window);
        onWindowShown(window);
    }

    void hide(std::uint64_t window)
    {
        std::erase_if(windows, [&](const auto& entry) { return entry.window == window; });
        onWindowGone(window);
    }

    std::vector<WindowFacts> windows;
    std::vector<pid_t> forward;
    std::vector<std::uint64_t> forwardWindows;
};

} // namespace workspace
