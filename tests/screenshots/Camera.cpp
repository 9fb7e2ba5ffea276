#include "screenshots/Camera.h"

#include "desktop/Pixels.h"
#include "person/Screens.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace screenshots {

using desktop::Rectangle;

namespace {

constexpr int MARGIN = 24;

/// The smallest area that holds both.
Rectangle around(const Rectangle& one, const Rectangle& other)
{
    const int left = std::min<int>(one.x, other.x);
    const int top = std::min<int>(one.y, other.y);
    const int right = std::max(one.x + one.width, other.x + other.width);
    const int bottom = std::max(one.y + one.height, other.y + other.height);
    return {
        static_cast<std::int16_t>(left),
        static_cast<std::int16_t>(top),
        static_cast<std::uint16_t>(right - left),
        static_cast<std::uint16_t>(bottom - top)};
}

} // namespace

Camera::Camera(
    desktop::Desktop& desk,
    person::Person& user,
    desktop::StatusPanel& panel,
    std::filesystem::path pictures,
    Look look
)
    : desk(desk),
      user(user),
      panel(panel),
      pictures(std::move(pictures)),
      look(look)
{
}

std::optional<Rectangle> Camera::placeOfWindow(const std::string& title)
{
    for (const xcb_window_t window : desk.windows().managed()) {
        if (desk.connection().textProperty(window, "_NET_WM_NAME") == title &&
            desk.windows().isViewable(window)) {
            return placeWithFrame(window);
        }
    }
    return std::nullopt;
}

Rectangle Camera::placeWithFrame(xcb_window_t window)
{
    Rectangle place = desk.windows().placeOf(window);
    const auto frame = desk.connection().property(window, "_NET_FRAME_EXTENTS");
    if (frame.size() == 4) {
        place.x = static_cast<std::int16_t>(place.x - static_cast<int>(frame[0]));
        place.y = static_cast<std::int16_t>(place.y - static_cast<int>(frame[2]));
        place.width = static_cast<std::uint16_t>(place.width + frame[0] + frame[1]);
        place.height = static_cast<std::uint16_t>(place.height + frame[2] + frame[3]);
    }
    return place;
}

void Camera::takeFocused(const std::string& name)
{
    user.waitUntilScreenRests();
    take(name, placeWithFrame(desk.windows().active()));
}

void Camera::takeWindow(const std::string& name, const std::string& title)
{
    std::optional<Rectangle> place;
    user.waitUntil("there is a window " + title, [&] {
        place = placeOfWindow(title);
        return place.has_value();
    });
    take(name, *place);
}

void Camera::takePopover(const std::string& name)
{
    std::optional<Rectangle> place;
    user.waitUntil("there is a popover", [&] {
        place = placeOfWindow(person::screens::POPOVER);
        return place.has_value();
    });
    Rectangle area = around(*place, panel.firstItem());
    if (const auto menu = user.placeOfMenu()) {
        area = around(area, *menu);
    }
    take(name, area);
}

void Camera::takeItem(const std::string& name)
{
    constexpr int WIDTH_OF_PART = 160;
    Rectangle area = panel.firstItem();
    area.width = static_cast<std::uint16_t>(WIDTH_OF_PART * look.scale);
    user.waitUntilScreenRests();
    save(name, area);
}

void Camera::take(const std::string& name, const Rectangle& area)
{
    user.waitUntilScreenRests();
    const Rectangle screen = desk.server().screens().front();
    const int margin = MARGIN * look.scale;
    const int left = std::max(area.x - margin, 0);
    const int top = std::max(area.y - margin, 0);
    const int right = std::min<int>(area.x + area.width + margin, screen.width);
    const int bottom = std::min<int>(area.y + area.height + margin, screen.height);
    save(
        name,
        {static_cast<std::int16_t>(left),
         static_cast<std::int16_t>(top),
         static_cast<std::uint16_t>(right - left),
         static_cast<std::uint16_t>(bottom - top)}
    );
}

void Camera::save(const std::string& name, const Rectangle& area)
{
    const std::string suffix =
        std::string(look.dark ? "-dark" : "") + (look.scale == 1 ? "" : "@2x");
    capture(desk.connection(), area).savePng(pictures / (name + suffix + ".png"));
}

} // namespace screenshots
