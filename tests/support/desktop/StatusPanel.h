// A real panel at the lower edge of the main screen, with a status area in it and nothing else. It
// ends with the object. One thread.
#pragma once

#include "desktop/ChildProcess.h"
#include "desktop/Desktop.h"
#include "desktop/Pixels.h"

namespace desktop {

class StatusPanel
{
public:
    enum class Kind
    {
        SystemTray,    // tint2: XEmbed
        StatusNotifier // lxqt-panel: over the session bus
    };

    static constexpr Pixel LIGHT = 0xE6E6E6;
    static constexpr Pixel DARK = 0x202428;

    /// Returns when the panel is drawn, on this ground, and items can come; throws `Failure` when
    /// it does not come to that. The scale makes the tray, and what is in it, so much larger.
    StatusPanel(Desktop& desktop, Kind kind, Pixel ground = LIGHT, int scale = 1);

    ChildProcess& process() { return panel; }

    /// The place of the first item, where one is.
    [[nodiscard]] Rectangle firstItem() const { return first; }

private:
    ChildProcess panel;
    Rectangle first;
};

} // namespace desktop
