// Ownership of what xcb hands out to be freed: replies, errors, events.
#pragma once

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace x11 {

struct FreeMemory
{
    void operator()(void* memory) const { std::free(memory); }
};

template <typename T> using Reply = std::unique_ptr<T, FreeMemory>;
using Event = Reply<xcb_generic_event_t>;

/// Type of an event without the mark of those that another client sent.
inline std::uint8_t typeOf(const xcb_generic_event_t& event)
{
    constexpr unsigned SENT = 0x80;
    return static_cast<std::uint8_t>(event.response_type & ~SENT);
}

/// The event as what its type says it is.
template <typename T> const T& as(const xcb_generic_event_t& event)
{
    return *static_cast<const T*>(static_cast<const void*>(&event));
}

} // namespace x11
