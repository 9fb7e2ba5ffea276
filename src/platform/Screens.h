// The screens of the desktop. Main thread only.
#pragma once

#include "platform/Geometry.h"
#include "platform/Port.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform {

struct Screen
{
    std::string identifier; // stable while the screen stays connected
    Rect frame;

    friend bool operator==(const Screen&, const Screen&) = default;
};

class Screens : public Port
{
public:
    /// All screens, the desktop's order; nothing when the desktop cannot be asked.
    virtual std::optional<std::vector<Screen>> screens() = 0;

    /// The screen that the user regards as the first one; nothing when there is none.
    virtual std::optional<Screen> mainScreen() = 0;

    /// Calls `handler` after screens came, went or moved, or another one became the main one. One
    /// handler; an empty one takes it away.
    virtual void observe(std::function<void()> handler) = 0;
};

} // namespace platform
