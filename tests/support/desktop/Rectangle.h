// A part of the desktop, in pixels of the root window.
#pragma once

#include <cstdint>

namespace desktop {

struct Rectangle
{
    std::int16_t x = 0;
    std::int16_t y = 0;
    std::uint16_t width = 0;
    std::uint16_t height = 0;

    friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

} // namespace desktop
