// This program among the others on the desktop. Main thread only.
#pragma once

#include "platform/Port.h"

#include <cstdint>

namespace platform {

inline constexpr unsigned PRESENTATION_DEFAULT = 0;
inline constexpr unsigned PRESENTATION_AUTO_HIDE_DOCK = 0x1;
inline constexpr unsigned PRESENTATION_AUTO_HIDE_MENU_BAR = 0x4;
inline constexpr unsigned PRESENTATION_HIDE_MENU_BAR = 0x8;
inline constexpr unsigned PRESENTATION_DISABLE_PROCESS_SWITCHING = 0x20;
inline constexpr unsigned PRESENTATION_DISABLE_FORCE_QUIT = 0x40;
inline constexpr unsigned PRESENTATION_DISABLE_HIDE_APPLICATION = 0x100;

class Application : public Port
{
public:
    /// While process switching is disabled every screen is covered and keyboard and pointer are
    /// captured for this program; what cannot be captured at once is tried again until it is. With
    /// the default options both end, after the current turn of the main queue, unless they were
    /// disabled again by then: an exchange of lock windows leaves no gap.
    virtual void setPresentationOptions(unsigned options) = 0;

    /// Makes this program the active one; with `ignoringOtherApps` even while another is.
    virtual void activate(bool ignoringOtherApps) = 0;

    /// Makes this program the active one with a window in front that the toolkit made and shows: it
    /// gets the keyboard, and not another one of this program that was to come forward before.
    /// Where there is a lock, the lock keeps the keyboard.
    virtual void bringForward(std::uintptr_t nativeWindow) = 0;
};

} // namespace platform
