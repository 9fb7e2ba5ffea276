// One kind of status area that a desktop may have. Main thread only.
#pragma once

#include "linux/statusbar/ItemSource.h"
#include "linux/statusbar/Showing.h"
#include "platform/Port.h"

#include <functional>
#include <memory>

namespace statusbar {

/// Side of an item in most panels, in pixels.
inline constexpr int THICKNESS = 22;

class StatusArea : public platform::Port
{
public:
    /// Whether there is such an area now.
    virtual bool isPresent() = 0;

    /// Only while it is present.
    virtual std::unique_ptr<Showing> show(ItemSource& item) = 0;

    /// The area came or went. One that is replaced goes first, so that nothing stays in the old
    /// one.
    std::function<void()> onPresenceChanged;
};

} // namespace statusbar
