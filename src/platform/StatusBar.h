// The status area of the desktop, where programs without a window keep a small picture. Main thread
// only.
#pragma once

#include "platform/Geometry.h"
#include "platform/Port.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

inline constexpr double STATUS_ITEM_VARIABLE_LENGTH = -1.0;

/// What an item shows.
struct StatusItemLook
{
    std::string image; // path of a picture that the program carries with it
    bool highlighted = false;
    std::string title; // for people who do not see the picture

    friend bool operator==(const StatusItemLook&, const StatusItemLook&) = default;
};

/// One entry of the menu that the desktop shows for an item.
struct StatusMenuEntry
{
    std::string title;
    std::function<void()> action;
};

/// One place in the status area; it is given back when this is destroyed. Where the desktop has no
/// status area yet, the item appears as soon as there is one.
class StatusItem : public Port
{
public:
    /// True while a status area shows the item; right from the creation on.
    virtual bool isShown() = 0;

    /// The item's place on the screens; nothing where the desktop keeps it to itself.
    virtual std::optional<Rect> frame() = 0;

    /// Has the item drawn again soon, after the current turn of the main queue at the earliest.
    virtual void setNeedsDisplay() = 0;

    virtual void setMenu(std::vector<StatusMenuEntry> entries) = 0;

    /// Asked for what to show at every drawing.
    std::function<StatusItemLook()> onDraw;

    /// The item was activated: a click, or its key.
    std::function<void()> onMouseDown;
};

class StatusBar : public Port
{
public:
    /// A new item. Never empty. `length` is its width, or the variable length.
    virtual std::unique_ptr<StatusItem> statusItem(double length) = 0;
};

} // namespace platform
