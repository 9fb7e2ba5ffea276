// A file that is either what it was or all new, whatever happens meanwhile. Any thread may call.
#pragma once

#include <string>

namespace xdg {

/// Puts the text in the place of the file, through one beside it that is on the disk before. False,
/// with the reason in errno, where that fails: the file is then as it was.
bool replaceFile(const std::string& path, const std::string& text, unsigned mode);

/// All of the file; empty where it cannot be read.
std::string contentOf(const std::string& path);

} // namespace xdg
