// Bytes of a secret: a vector whose memory is overwritten before it is given back. One thread at a
// time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <sodium.h>

namespace secretservice {

template <class T> struct ClearingAllocator
{
    using value_type = T;

    ClearingAllocator() = default;

    template <class U> ClearingAllocator(const ClearingAllocator<U>& /*other*/) noexcept {}

    T* allocate(std::size_t count) { return std::allocator<T>().allocate(count); }

    void deallocate(T* memory, std::size_t count) noexcept
    {
        sodium_memzero(memory, count * sizeof(T));
        std::allocator<T>().deallocate(memory, count);
    }

    friend bool operator==(const ClearingAllocator&, const ClearingAllocator&) { return true; }
};

using SecretBytes = std::vector<std::uint8_t, ClearingAllocator<std::uint8_t>>;

} // namespace secretservice
