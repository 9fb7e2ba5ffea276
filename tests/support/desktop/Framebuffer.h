// The pixels of a private X server as they lie in its memory: looking at them asks nothing of the
// server and takes microseconds. Only for servers of one depth and byte order, those of this
// machine.
#pragma once

#include "desktop/Pixels.h"
#include "desktop/Rectangle.h"

#include <cstddef>
#include <filesystem>

namespace desktop {

class Framebuffer
{
public:
    /// Throws `Failure` when the file is none of 32 bits a pixel.
    explicit Framebuffer(const std::filesystem::path& file);
    ~Framebuffer();
    Framebuffer(const Framebuffer&) = delete;
    Framebuffer& operator=(const Framebuffer&) = delete;
    Framebuffer(Framebuffer&&) = delete;
    Framebuffer& operator=(Framebuffer&&) = delete;

    /// The pixels of a row from its left end on.
    [[nodiscard]] const volatile Pixel* row(int y) const;

private:
    const std::byte* memory = nullptr;
    std::size_t size = 0;
    std::size_t start = 0;
    std::size_t bytesPerRow = 0;
};

} // namespace desktop
