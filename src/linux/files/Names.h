// Names of files by themselves. Any thread.
#pragma once

#include <string_view>

namespace files {

/// The path without its folders; a name that has none stays what it is. Lives as long as `path`.
constexpr std::string_view baseName(std::string_view path)
{
    return path.substr(path.rfind('/') + 1);
}

} // namespace files
