// Plain windows without content, as covers of whole screens. Main thread only.
#pragma once

#include "platform/Geometry.h"
#include "platform/Port.h"

#include <memory>

namespace platform {

/// Keys of window levels, each level above all those of smaller keys.
enum class WindowLevelKey
{
    ModalPanel = 10,
    ScreenSaver = 13,
};

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
};

} // namespace platform
