#include "desktop/Framebuffer.h"

#include "desktop/Failure.h"

#include <array>
#include <cstdint>
#include <cstring>

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace desktop {

namespace {

/// Places in the header of the X window dump format, a list of 32-bit numbers, most significant
/// byte first.
constexpr std::size_t HEADER_SIZE = 0;
constexpr std::size_t BITS_PER_PIXEL = 11;
constexpr std::size_t BYTES_PER_LINE = 12;
constexpr std::size_t COLOUR_COUNT = 19;
constexpr std::size_t FIELD_COUNT = 25;

constexpr std::size_t COLOUR_SIZE = 12;

} // namespace

Framebuffer::Framebuffer(const std::filesystem::path& file)
{
    const int opened = open(file.c_str(), O_RDONLY | O_CLOEXEC);

    struct stat facts
    {
    };

    if (opened < 0 || fstat(opened, &facts) != 0) {
        throw Failure("no framebuffer in " + file.string());
    }
    size = static_cast<std::size_t>(facts.st_size);
    void* mapped = mmap(nullptr, size, PROT_READ, MAP_SHARED, opened, 0);
    close(opened);
    std::array<std::uint32_t, FIELD_COUNT> header{};
    if (mapped == MAP_FAILED || size < sizeof header) {
        throw Failure("cannot look into " + file.string());
    }
    memory = static_cast<const std::byte*>(mapped);
    std::memcpy(header.data(), memory, sizeof header);
    bytesPerRow = ntohl(header[BYTES_PER_LINE]);
    start = ntohl(header[HEADER_SIZE]) + ntohl(header[COLOUR_COUNT]) * COLOUR_SIZE;
    if (ntohl(header[BITS_PER_PIXEL]) != 32) {
        throw Failure(file.string() + " has another depth than expected");
    }
}

Framebuffer::~Framebuffer()
{
    munmap(const_cast<std::byte*>(memory), size);
}

const volatile Pixel* Framebuffer::row(int y) const
{
    const std::byte* place = memory + start + static_cast<std::size_t>(y) * bytesPerRow;
    return static_cast<const volatile Pixel*>(static_cast<const void*>(place));
}

} // namespace desktop
