// The screens as RandR 1.5 monitors; where there are none, the root window is the one screen. Main
// thread only.
#pragma once

#include "linux/x11/X11Desktop.h"
#include "platform/Screens.h"

namespace x11 {

class X11Screens final : public platform::Screens
{
public:
    explicit X11Screens(const X11Desktop& desktop) : desktop(desktop) {}

    std::optional<std::vector<platform::Screen>> screens() override;
    std::optional<platform::Screen> mainScreen() override;

private:
    struct Monitor
    {
        platform::Screen screen;
        bool primary = false;
    };

    std::optional<std::vector<Monitor>> monitors() const;
    std::vector<Monitor> randrMonitors() const;
    std::optional<Monitor> wholeDesktop() const;
    std::string nameOf(xcb_atom_t atom) const;

    const X11Desktop& desktop;
};

} // namespace x11
