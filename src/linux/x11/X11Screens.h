// The screens as RandR 1.5 monitors; where there are none, the root window is the one screen. The
// toolkit knows outputs only, and nothing of monitors that are a part of one or several of them.
// Main thread only.
#pragma once

#include "linux/x11/X11Desktop.h"
#include "platform/Screens.h"

namespace x11 {

class X11Screens final : public platform::Screens
{
public:
    /// It must outlive this.
    explicit X11Screens(X11Desktop& desktop);

    std::optional<std::vector<platform::Screen>> screens() override;
    std::optional<platform::Screen> mainScreen() override;
    void observe(std::function<void()> handler) override;

private:
    struct Monitor
    {
        platform::Screen screen;
        bool primary = false;

        friend bool operator==(const Monitor&, const Monitor&) = default;
    };

    std::optional<std::vector<Monitor>> monitors() const;
    std::vector<Monitor> randrMonitors() const;
    std::optional<Monitor> wholeDesktop() const;
    std::string nameOf(xcb_atom_t atom) const;
    bool mayChangeScreens(const xcb_generic_event_t& event) const;
    void handle(const xcb_generic_event_t& event);

    const X11Desktop& desktop;
    std::function<void()> handler;
    std::optional<std::vector<Monitor>> latest; // what the handler knows
    X11Desktop::Subscription subscription;
};

} // namespace x11
