// How strong the protection is that this display allows, for the user to read.
#pragma once

#include "linux/x11/Extensions.h"

#include <string>

namespace x11 {

/// Whose session it is: with `Wayland` the display shows one's X11 programs among others.
enum class Session
{
    X11,
    Wayland,
};

/// One line.
std::string strength(const Extensions& extensions, Session session);

} // namespace x11
