// The shells, by the names of their programs. A wrapper script of any of them is the application
// whose program it starts. Any thread.
#pragma once

#include "linux/files/Names.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace proc {

/// `program` with its folder or without.
inline bool isShell(std::string_view program)
{
    constexpr std::array<std::string_view, 8> SHELLS{
        "sh", "ash", "bash", "dash", "zsh", "ksh", "mksh", "busybox"};
    return std::find(SHELLS.begin(), SHELLS.end(), files::baseName(program)) != SHELLS.end();
}

} // namespace proc
