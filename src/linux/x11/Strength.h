// How strong the protection is that this display allows, for the user to read.
#pragma once

#include "linux/x11/Extensions.h"

#include <string>

namespace x11 {

/// One line.
std::string strength(const Extensions& extensions);

} // namespace x11
