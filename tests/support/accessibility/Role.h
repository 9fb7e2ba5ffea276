// What kind of thing a program shows, under the protocol's numbers.
#pragma once

#include <cstdint>

namespace accessibility {

enum class Role : std::uint32_t
{
    CheckBox = 7,
    Label = 29,
    List = 31,
    ListItem = 32,
    MenuItem = 35,
    PasswordText = 40,
    PushButton = 43,
    Text = 61,
};

} // namespace accessibility
