// The one function of a fuzz target, given bytes as text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// Takes any bytes. What must hold for all of them is checked with `require`.
void fuzz(std::string_view bytes);

inline void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

// NOLINTNEXTLINE: the name is the engine's, and each target is one file
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz({static_cast<const char*>(static_cast<const void*>(data)), size});
    return 0;
}
