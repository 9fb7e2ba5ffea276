// One kind of status area that a desktop may have. Main thread only.
#pragma once

#include "platform/StatusBar.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace statusbar {

/// The item that an area shows. It outlives its showing, and what it calls in answer it calls
/// later.
class ItemSource
{
public:
    ItemSource() = default;
    ItemSource(const ItemSource&) = delete;
    ItemSource& operator=(const ItemSource&) = delete;
    ItemSource(ItemSource&&) = delete;
    ItemSource& operator=(ItemSource&&) = delete;
    virtual ~ItemSource() = default;

    /// Asked at every drawing.
    virtual platform::StatusItemLook look() = 0;

    virtual const std::vector<platform::StatusMenuEntry>& menu() const = 0;

    virtual void activate() = 0;

    /// An entry of the menu was chosen; one that is not there any more is ignored.
    virtual void choose(std::size_t entry) = 0;
};

/// An item in an area. Its end takes the item away.
class Showing
{
public:
    Showing() = default;
    Showing(const Showing&) = delete;
    Showing& operator=(const Showing&) = delete;
    Showing(Showing&&) = delete;
    Showing& operator=(Showing&&) = delete;
    virtual ~Showing() = default;

    virtual void redraw() = 0;
    virtual void menuChanged() = 0;

    /// In the desktop's pixels; nothing where the area keeps it to itself, or does not know it yet.
    virtual std::optional<platform::Rect> frame() const = 0;
};

class StatusArea
{
public:
    StatusArea() = default;
    StatusArea(const StatusArea&) = delete;
    StatusArea& operator=(const StatusArea&) = delete;
    StatusArea(StatusArea&&) = delete;
    StatusArea& operator=(StatusArea&&) = delete;
    virtual ~StatusArea() = default;

    /// Whether there is such an area now.
    virtual bool isPresent() = 0;

    /// Only while it is present.
    virtual std::unique_ptr<Showing> show(ItemSource& item) = 0;

    /// The area came or went. One that is replaced goes first, so that nothing stays in the old
    /// one.
    std::function<void()> onPresenceChanged;
};

} // namespace statusbar
