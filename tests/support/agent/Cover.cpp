#include "agent/Cover.h"

#include <algorithm>
#include <sstream>

namespace agent {

using desktop::LOCK_COLOUR;
using desktop::Rectangle;

namespace {

constexpr int CONTROLS_WIDTH = 800;
constexpr int CONTROLS_HEIGHT = 600;

Rectangle exceptionOn(desktop::Desktop& desk, const Rectangle& screen)
{
    const bool isMain = screen == desk.server().screens().front();
    return isMain ? controlsOf(screen) : Rectangle{};
}

} // namespace

Rectangle controlsOf(const Rectangle& mainScreen)
{
    const int width = std::min<int>(CONTROLS_WIDTH, mainScreen.width);
    const int height = std::min<int>(CONTROLS_HEIGHT, mainScreen.height);
    return {
        static_cast<std::int16_t>(mainScreen.x + (mainScreen.width - width) / 2),
        static_cast<std::int16_t>(mainScreen.y + (mainScreen.height - height) / 2),
        static_cast<std::uint16_t>(width),
        static_cast<std::uint16_t>(height)};
}

bool isCovered(desktop::Desktop& desk)
{
    const auto& screens = desk.server().screens();
    return std::all_of(screens.begin(), screens.end(), [&desk](const Rectangle& screen) {
        const auto seen = capture(desk.connection(), screen);
        return seen.countOthers(LOCK_COLOUR, exceptionOn(desk, screen)) == 0;
    });
}

bool isUncovered(desktop::Desktop& desk)
{
    const auto& screens = desk.server().screens();
    return std::none_of(screens.begin(), screens.end(), [&desk](const Rectangle& screen) {
        return capture(desk.connection(), screen).contains(LOCK_COLOUR);
    });
}

bool showsControls(desktop::Desktop& desk)
{
    const Rectangle controls = controlsOf(desk.server().screens().front());
    return !capture(desk.connection(), controls).isAllOf(LOCK_COLOUR);
}

std::string describe(desktop::Desktop& desk)
{
    std::ostringstream text;
    for (const Rectangle& screen : desk.server().screens()) {
        const auto seen = capture(desk.connection(), screen);
        text << screen.width << "x" << screen.height << "+" << screen.x << "+" << screen.y << ": "
             << seen.countOthers(LOCK_COLOUR, exceptionOn(desk, screen))
             << " pixels outside the controls are not of the lock's colour\n";
    }
    desktop::WindowList& windows = desk.windows();
    for (const xcb_window_t window : windows.viewableTopLevels()) {
        const Rectangle place = windows.placeOf(window);
        text << "window 0x" << std::hex << window << std::dec << " " << place.width << "x"
             << place.height << "+" << place.x << "+" << place.y << " " << windows.classOf(window)
             << "\n";
    }
    text << "active: window 0x" << std::hex << windows.active() << std::dec << " of process "
         << windows.activeProcess() << "\n";
    return text.str();
}

} // namespace agent
