// What can be true of a thing that a program shows, under the protocol's numbers.
#pragma once

#include <cstdint>

namespace accessibility {

enum class State : std::uint8_t
{
    Active = 1,
    Checked = 4,
    Enabled = 8,
    Focusable = 11,
    Focused = 12,
    Modal = 16,
    Selected = 23,
    Showing = 25,
};

} // namespace accessibility
