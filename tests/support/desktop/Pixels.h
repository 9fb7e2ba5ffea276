// What a person would see: the contents of the screens at one moment.
#pragma once

#include "desktop/Rectangle.h"
#include "desktop/XConnection.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace desktop {

/// 0xRRGGBB.
using Pixel = std::uint32_t;

inline constexpr Pixel LOCK_COLOUR = 0x41444B;

class Picture
{
public:
    Picture(Rectangle area, std::vector<Pixel> pixels) : area(area), pixels(std::move(pixels)) {}

    [[nodiscard]] Rectangle where() const { return area; }

    /// Of the pixel at a place of the root window, which must lie in the area.
    [[nodiscard]] Pixel at(int x, int y) const;

    [[nodiscard]] bool isAllOf(Pixel colour) const;

    /// How many pixels are of another colour, outside the given part of the root window.
    [[nodiscard]] std::size_t countOthers(Pixel colour, Rectangle except = {}) const;

    [[nodiscard]] bool contains(Pixel colour) const;

    /// How many pixels differ from those of another picture of the same area.
    [[nodiscard]] std::size_t countDifferent(const Picture& other) const;

    /// Throws `Failure` when the file cannot be written.
    void savePng(const std::filesystem::path& path) const;

private:
    Rectangle area;
    std::vector<Pixel> pixels; // row by row
};

/// Throws `Failure` when the server does not show them, as for an area outside the root window.
Picture capture(XConnection& connection, Rectangle area);

} // namespace desktop
