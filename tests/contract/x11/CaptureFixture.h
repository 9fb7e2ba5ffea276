// A display whose screens are covered and uncovered, and windows that the lock adopts.
#pragma once

#include "ToolkitWindow.h"
#include "X11World.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

class Capture : public testing::Test
{
protected:
    static constexpr platform::Rect FRAME{0, 0, 1280, 720};

    void lock() { world.application.setPresentationOptions(X11World::LOCKED); }

    void unlock()
    {
        world.application.setPresentationOptions(platform::PRESENTATION_DEFAULT);
        ASSERT_TRUE(world.mainLoop.runUntil([this] { return !world.guard.captured(); }));
    }

    /// Makes the toolkit's window the lock's own one, as the lock window does.
    std::unique_ptr<platform::PlainWindow> adopt(ToolkitWindow& window)
    {
        auto adopted = world.windows.adoptWindow(window.id(), world.lockAttributes(FRAME));
        window.show();
        adopted->makeKeyAndOrderFront();
        return adopted;
    }

    /// Whether the window becomes the one that takes the keys. The guard works on a thread of its
    /// own: what is typed before goes to the one that was.
    bool takesKeysSoon(const ToolkitWindow& window)
    {
        return world.mainLoop.runUntil([&] {
            return world.session.windows().focused() == window.id();
        });
    }

    bool typedSoon(ToolkitWindow& window, const std::string& text)
    {
        return world.mainLoop.runUntil([&] { return window.typedText() == text; });
    }

    X11World world{true};
    desktop::Input& input = world.session.input();
    std::string display = world.session.server().displayName();
};
