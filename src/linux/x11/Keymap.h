// The core keyboard mapping: which key makes which symbol, and what the modifier bits mean. One
// thread at a time.
#pragma once

#include "linux/x11/Connection.h"

#include <cstdint>
#include <optional>

namespace x11 {

/// A key with that symbol at its first level, or nothing when there is none.
std::optional<xcb_keycode_t> findKey(const Connection& connection, std::uint32_t keysym);

/// Bits of the modifier state that carry a meaning of their own on this keyboard.
struct ModifierBits
{
    std::uint8_t alt = 0;
    std::uint8_t super = 0;
};

ModifierBits queryModifierBits(const Connection& connection);

} // namespace x11
