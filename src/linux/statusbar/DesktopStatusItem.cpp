#include "linux/statusbar/DesktopStatusItem.h"

#include "platform/Call.h"

#include <utility>

namespace statusbar {

DesktopStatusItem::DesktopStatusItem(DesktopStatusBar& bar) : bar(bar)
{
    bar.items.push_back(this);
    later([this] {
        ready = true;
        settle();
    });
}

DesktopStatusItem::~DesktopStatusItem()
{
    std::erase(bar.items, this);
}

bool DesktopStatusItem::isShown()
{
    return bar.presentArea() != nullptr;
}

std::optional<platform::Rect> DesktopStatusItem::frame()
{
    return showing != nullptr ? showing->frame() : std::nullopt;
}

void DesktopStatusItem::setNeedsDisplay()
{
    if (!std::exchange(needsDisplay, true)) {
        later([this] { draw(); });
    }
}

void DesktopStatusItem::setMenu(std::vector<platform::StatusMenuEntry> entries)
{
    this->entries = std::move(entries);
    if (showing != nullptr) {
        showing->menuChanged();
    }
}

void DesktopStatusItem::settle()
{
    StatusArea* present = bar.presentArea();
    if (!ready || present == area) {
        return;
    }
    showing.reset(); // before it appears elsewhere
    area = present;
    if (area != nullptr) {
        showing = area->show(*this);
    }
}

platform::StatusItemLook DesktopStatusItem::look()
{
    const auto drawing = onDraw;
    return drawing ? drawing() : platform::StatusItemLook{};
}

void DesktopStatusItem::activate()
{
    platform::call(bar.onActivated);
    later([this] { platform::call(onMouseDown); });
}

void DesktopStatusItem::choose(std::size_t entry)
{
    if (entry >= entries.size()) {
        return;
    }
    platform::call(bar.onActivated);
    later([action = entries[entry].action] { platform::call(action); });
}

void DesktopStatusItem::draw()
{
    needsDisplay = false;
    if (showing != nullptr) {
        showing->redraw();
    }
}

void DesktopStatusItem::later(std::function<void()> action)
{
    bar.queues.asyncMain(lifetime.guard(std::move(action)));
}

} // namespace statusbar
