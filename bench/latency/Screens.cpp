#include "latency/Screens.h"

#include "agent/Cover.h"
#include "desktop/Pixels.h"

#include <functional>
#include <numeric>

namespace latency {

using desktop::LOCK_COLOUR;
using desktop::Pixel;

namespace {

constexpr Pixel COLOUR_BITS = 0xFFFFFF;

bool holds(desktop::Rectangle area, int x, int y)
{
    return x >= area.x && x < area.x + area.width && y >= area.y && y < area.y + area.height;
}

} // namespace

Screens::Screens(desktop::Desktop& desk)
    : framebuffer(desk.framebufferFile()),
      whole(desk.windows().placeOf(desk.connection().root())),
      second(desk.server().screens().at(1)),
      controls(agent::controlsOf(desk.server().screens().front()))
{
}

void Screens::remember()
{
    before.clear();
    for (int y = 0; y < whole.height; y += ROW_DISTANCE) {
        const volatile Pixel* row = framebuffer.row(y);
        before.insert(before.end(), row, row + whole.width);
    }
}

bool Screens::areCovered() const
{
    for (int y = 0; y < whole.height; y += ROW_DISTANCE) {
        if (!rowIsCovered(y)) {
            return false;
        }
    }
    return true;
}

bool Screens::rowIsCovered(int y) const
{
    const volatile Pixel* row = framebuffer.row(y);
    for (int x = 0; x < whole.width; ++x) {
        if ((row[x] & COLOUR_BITS) != LOCK_COLOUR && !holds(controls, x, y)) {
            return false;
        }
    }
    return true;
}

bool Screens::showSomethingElse() const
{
    return anyPixelOf(second, [](Pixel seen, Pixel old) {
        return seen != old && (seen & COLOUR_BITS) != LOCK_COLOUR;
    });
}

bool Screens::areAsBefore() const
{
    return !anyPixelOf(whole, [](Pixel seen, Pixel old) { return seen != old; });
}

template <typename Test> bool Screens::anyPixelOf(desktop::Rectangle area, Test test) const
{
    const Pixel* old = before.data();
    for (int y = 0; y < whole.height; y += ROW_DISTANCE, old += whole.width) {
        const volatile Pixel* row = framebuffer.row(y);
        const bool any = std::inner_product(
            row + area.x, row + area.x + area.width, old + area.x, false, std::logical_or<>(), test
        );
        if (any) {
            return true;
        }
    }
    return false;
}

} // namespace latency
