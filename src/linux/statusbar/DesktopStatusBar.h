// The status bar of the desktop at hand: of several kinds of status areas, in order of preference,
// the first that is present shows the items. Areas are followed as they come and go; an item is
// never in two. Main thread only.
#pragma once

#include "linux/statusbar/StatusArea.h"
#include "platform/DispatchQueues.h"
#include "platform/StatusBar.h"

#include <memory>
#include <vector>

namespace statusbar {

class DesktopStatusItem;

class DesktopStatusBar final : public platform::StatusBar
{
public:
    using Areas = std::vector<std::unique_ptr<StatusArea>>;

    /// The queues must outlive this, and this every item.
    DesktopStatusBar(Areas areas, platform::DispatchQueues& queues);

    std::unique_ptr<platform::StatusItem> statusItem(double length) override;

    /// An item was activated, or an entry of its menu; called at once, before the item's own
    /// callback.
    std::function<void()> onActivated;

private:
    friend class DesktopStatusItem;

    StatusArea* presentArea() const;
    void presenceChanged() const;

    Areas areas;
    platform::DispatchQueues& queues;
    std::vector<DesktopStatusItem*> items; // those that live
};

} // namespace statusbar
