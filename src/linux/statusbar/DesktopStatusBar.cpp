#include "linux/statusbar/DesktopStatusBar.h"

#include "linux/statusbar/DesktopStatusItem.h"

#include <algorithm>
#include <utility>

namespace statusbar {

DesktopStatusBar::DesktopStatusBar(Areas areas, platform::DispatchQueues& queues)
    : areas(std::move(areas)),
      queues(queues)
{
    for (const auto& area : this->areas) {
        area->onPresenceChanged = [this] { presenceChanged(); };
    }
}

std::unique_ptr<platform::StatusItem> DesktopStatusBar::statusItem(double /*length*/)
{
    return std::make_unique<DesktopStatusItem>(*this); // panels decide about the width
}

StatusArea* DesktopStatusBar::presentArea() const
{
    const auto found = std::find_if(areas.begin(), areas.end(), [](const auto& area) {
        return area->isPresent();
    });
    return found == areas.end() ? nullptr : found->get();
}

void DesktopStatusBar::presenceChanged() const
{
    for (DesktopStatusItem* item : std::vector(items)) {
        if (std::find(items.begin(), items.end(), item) != items.end()) {
            item->settle();
        }
    }
}

} // namespace statusbar
