// Windows outside the reach of the window manager: plain ones without content, as covers of whole
// screens, and the toolkit's own window of a lock; and what the toolkit cannot say of its ordinary
// windows. Main thread only.
#pragma once

#include "platform/Geometry.h"
#include "platform/Port.h"

#include <cstdint>
#include <memory>

namespace platform {

/// Keys of window levels, each level above all those of smaller keys.
enum class WindowLevelKey
{
    ModalPanel = 10,
    ScreenSaver = 13,
};

/// Of all that covers a screen, so that nothing flashes where one of these windows follows another.
inline constexpr Color LOCK_COLOR{65.0 / 255.0, 68.0 / 255.0, 75.0 / 255.0, 1.0};

inline constexpr unsigned COLLECTION_BEHAVIOR_CAN_JOIN_ALL_SPACES = 1;
inline constexpr unsigned STYLE_MASK_BORDERLESS = 0;

struct WindowAttributes
{
    bool releasedWhenClosed = true;
    Color backgroundColor;
    bool opaque = true;
    WindowLevelKey level = WindowLevelKey::ModalPanel;
    unsigned collectionBehavior = 0;
    unsigned styleMask = STYLE_MASK_BORDERLESS;
    Rect frame;

    friend bool operator==(const WindowAttributes&, const WindowAttributes&) = default;
};

/// A window; it is closed at the latest when it is destroyed.
class PlainWindow : public Port
{
public:
    virtual void makeKeyAndOrderFront() = 0;
    virtual void close() = 0;
};

class Windows : public Port
{
public:
    /// A new window that is not on the screen yet. Never empty.
    virtual std::unique_ptr<PlainWindow> createWindow(const WindowAttributes& attributes) = 0;

    /// Gives a window that the toolkit made, and has not shown yet, these attributes, and keeps it
    /// above all others of its level from when it is made key until it is closed or destroyed; the
    /// latest one made key receives the captured keyboard. Showing and hiding it stays the
    /// toolkit's. Never empty.
    virtual std::unique_ptr<PlainWindow>
    adoptWindow(std::uintptr_t nativeWindow, const WindowAttributes& attributes) = 0;

    /// Keeps a window that the toolkit made out of the desktop's lists of windows the next time
    /// that it is shown.
    virtual void excludeFromWindowsMenu(std::uintptr_t nativeWindow) = 0;

    /// True while the desktop lets what lies below a translucent window shine through.
    virtual bool composited() = 0;
};

} // namespace platform
