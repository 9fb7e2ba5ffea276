// An item of the desktop's status bar, in whichever area is present. It is drawn for the first time
// one turn after it was made, so that its callbacks can be set. Main thread only.
#pragma once

#include "linux/statusbar/DesktopStatusBar.h"
#include "linux/statusbar/StatusArea.h"
#include "platform/Lifetime.h"

namespace statusbar {

class DesktopStatusItem final : public platform::StatusItem, private ItemSource
{
public:
    explicit DesktopStatusItem(DesktopStatusBar& bar);
    ~DesktopStatusItem() override;
    DesktopStatusItem(const DesktopStatusItem&) = delete;
    DesktopStatusItem& operator=(const DesktopStatusItem&) = delete;
    DesktopStatusItem(DesktopStatusItem&&) = delete;
    DesktopStatusItem& operator=(DesktopStatusItem&&) = delete;

    bool isShown() override;
    std::optional<platform::Rect> frame() override;
    void setNeedsDisplay() override;
    void setMenu(std::vector<platform::StatusMenuEntry> entries) override;

    /// Moves to the area that is present now.
    void settle();

private:
    platform::StatusItemLook look() override;

    const std::vector<platform::StatusMenuEntry>& menu() const override { return entries; }

    void activate() override;
    void choose(std::size_t entry) override;

    void draw();
    void later(std::function<void()> action);

    DesktopStatusBar& bar;
    std::vector<platform::StatusMenuEntry> entries;
    bool ready = false; // the first turn is over
    bool needsDisplay = false;
    StatusArea* area = nullptr; // that shows it
    std::unique_ptr<Showing> showing;
    platform::Lifetime lifetime;
};

} // namespace statusbar
