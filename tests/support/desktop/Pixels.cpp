#include "desktop/Pixels.h"

#include "desktop/Failure.h"

#include <algorithm>
#include <cstring>

#include <png.h>

namespace desktop {

namespace {

constexpr Pixel COLOUR_BITS = 0xFFFFFF;

bool isInside(Rectangle area, int x, int y)
{
    return x >= area.x && x < area.x + area.width && y >= area.y && y < area.y + area.height;
}

} // namespace

Pixel Picture::at(int x, int y) const
{
    const auto row = static_cast<std::size_t>(y - area.y);
    return pixels.at(row * area.width + static_cast<std::size_t>(x - area.x));
}

bool Picture::isAllOf(Pixel colour) const
{
    return std::all_of(pixels.begin(), pixels.end(), [colour](Pixel pixel) {
        return pixel == colour;
    });
}

std::size_t Picture::countOthers(Pixel colour, Rectangle except) const
{
    std::size_t count = 0;
    std::size_t index = 0;
    for (int y = area.y; y < area.y + area.height; ++y) {
        for (int x = area.x; x < area.x + area.width; ++x) {
            const bool other = pixels[index] != colour && !isInside(except, x, y);
            count += other ? 1 : 0;
            ++index;
        }
    }
    return count;
}

bool Picture::contains(Pixel colour) const
{
    return std::find(pixels.begin(), pixels.end(), colour) != pixels.end();
}

std::size_t Picture::countDifferent(const Picture& other) const
{
    const std::size_t shared = std::min(pixels.size(), other.pixels.size());
    std::size_t count = std::max(pixels.size(), other.pixels.size()) - shared;
    for (std::size_t index = 0; index < shared; ++index) {
        count += pixels[index] != other.pixels[index] ? 1U : 0U;
    }
    return count;
}

void Picture::savePng(const std::filesystem::path& path) const
{
    std::vector<png_byte> bytes;
    bytes.reserve(pixels.size() * 3);
    for (const Pixel pixel : pixels) {
        bytes.push_back(static_cast<png_byte>(pixel >> 16));
        bytes.push_back(static_cast<png_byte>(pixel >> 8 & 0xFF));
        bytes.push_back(static_cast<png_byte>(pixel & 0xFF));
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = area.width;
    image.height = area.height;
    image.format = PNG_FORMAT_RGB;
    std::filesystem::create_directories(path.parent_path());
    if (png_image_write_to_file(&image, path.c_str(), 0, bytes.data(), 0, nullptr) == 0) {
        throw Failure("cannot write " + path.string() + ": " + image.message);
    }
}

Picture capture(XConnection& connection, Rectangle area)
{
    const auto cookie = xcb_get_image(
        connection.get(),
        XCB_IMAGE_FORMAT_Z_PIXMAP,
        connection.root(),
        area.x,
        area.y,
        area.width,
        area.height,
        ~0U
    );
    const Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(connection.get(), cookie, nullptr)
    );
    const std::size_t count = std::size_t{area.width} * area.height;
    if (!reply ||
        static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) != count * sizeof(Pixel)) {
        throw Failure("the X server does not show its pixels");
    }
    std::vector<Pixel> pixels(count);
    std::memcpy(pixels.data(), xcb_get_image_data(reply.get()), count * sizeof(Pixel));
    for (Pixel& pixel : pixels) {
        pixel &= COLOUR_BITS;
    }
    return {area, std::move(pixels)};
}

} // namespace desktop
