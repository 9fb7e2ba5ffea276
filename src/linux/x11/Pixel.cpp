#include "linux/x11/Pixel.h"

#include <bit>
#include <cmath>

namespace x11 {

namespace {

std::uint32_t component(double value, std::uint32_t mask)
{
    if (mask == 0) {
        return 0;
    }
    const int shift = std::countr_zero(mask);
    const double largest = mask >> shift;
    return static_cast<std::uint32_t>(std::lround(value * largest)) << shift;
}

std::uint32_t lowBits(unsigned depth)
{
    constexpr unsigned BITS = 32;
    return depth >= BITS ? ~0U : (1U << depth) - 1U;
}

std::uint32_t pixelOf(const xcb_visualtype_t& visual, unsigned depth, const platform::Color& color)
{
    const std::uint32_t colors = visual.red_mask | visual.green_mask | visual.blue_mask;
    const std::uint32_t alpha = lowBits(depth) & ~colors;
    return component(color.red, visual.red_mask) | component(color.green, visual.green_mask) |
           component(color.blue, visual.blue_mask) | alpha;
}

bool hasDirectColors(const xcb_visualtype_t& visual)
{
    return visual._class == XCB_VISUAL_CLASS_TRUE_COLOR ||
           visual._class == XCB_VISUAL_CLASS_DIRECT_COLOR;
}

/// The visual among those of one depth; nullptr when it is of another.
const xcb_visualtype_t* findVisual(const xcb_depth_t& depth, xcb_visualid_t wanted)
{
    auto visuals = xcb_depth_visuals_iterator(&depth);
    for (; visuals.rem > 0; xcb_visualtype_next(&visuals)) {
        if (visuals.data->visual_id == wanted) {
            return visuals.data;
        }
    }
    return nullptr;
}

/// The pixel value for a visual, or black where that is no visual of direct colours.
std::uint32_t
pixelForVisual(const Connection& connection, xcb_visualid_t wanted, const platform::Color& color)
{
    auto depths = xcb_screen_allowed_depths_iterator(&connection.screen());
    for (; depths.rem > 0; xcb_depth_next(&depths)) {
        const xcb_visualtype_t* visual = findVisual(*depths.data, wanted);
        if (visual != nullptr && hasDirectColors(*visual)) {
            return pixelOf(*visual, depths.data->depth, color);
        }
    }
    return connection.screen().black_pixel;
}

} // namespace

std::uint32_t pixelOf(const Connection& connection, const platform::Color& color)
{
    return pixelForVisual(connection, connection.screen().root_visual, color);
}

std::uint32_t
pixelOf(const Connection& connection, xcb_window_t window, const platform::Color& color)
{
    const Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr
    ));
    return pixelForVisual(
        connection, attributes ? attributes->visual : connection.screen().root_visual, color
    );
}

} // namespace x11
