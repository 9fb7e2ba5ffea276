// How the window manager of a desktop draws what it draws itself.
#pragma once

#include <filesystem>

namespace desktop {

/// Plain dark frames with a title and a cross, for a window manager that is started afterwards with
/// this home. The scale is that of a screen with so many pixels for one of the usual size.
void styleWindowFrames(const std::filesystem::path& home, int scale = 1);

} // namespace desktop
